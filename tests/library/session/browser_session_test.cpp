// Windows, tabs and browsers through the commands that choose, open, navigate and close them.
#include <gtest/gtest.h>
#include <memory>
#include <thread>
#include <utility>

#include "support/browser.h"
#include "support/library.h"
#include "support/page_server.h"

namespace quillmate::test {
namespace {

class BrowserSession : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    server = std::make_unique<PageServer>();
    first = server->Page("/first.html",
                         "<!doctype html><title>First</title><p id=p>one</p><button id=b "
                         "onclick=\"this.innerText = 'clicked'\">b</button>");
    second = server->Page("/second.html", "<!doctype html><title>Second page</title><p id=p>two</p>");
    third = server->Page("/third.html", "<!doctype html><title>Third</title><p id=p>three</p>");
  }
  static void TearDownTestSuite() { server.reset(); }

  static inline std::unique_ptr<PageServer> server;
  static inline std::string first;
  static inline std::string second;
  static inline std::string third;
};

Envelope Select(const std::string& target) {
  return Call("selectwindowuntop", {{"target", target}, {"tab-status", "loading"}});
}

TEST_F(BrowserSession, EachFormOfLocatorFindsTheTabAndNothingElse) {
  const Browser browser(first);
  ASSERT_EQ(Select("title=First"), Succeeded());
  for (const std::string& target : {std::string("index=0"), "url=" + first, std::string("title='First'"),
                                    std::string("xpath=//p[text()='one']"), std::string("id=p")}) {
    EXPECT_EQ(Select(target), Succeeded()) << target;
  }
  for (const std::string& target :
       {std::string("index=1"), std::string("title=Firs"), std::string("title=first"), "url=" + first + "#x",
        std::string("xpath=//p[text()='two']")}) {
    EXPECT_EQ(Select(target), Failed("Browser not found!")) << target;
  }
}

TEST_F(BrowserSession, AHandleIsReadInBothBases) {
  const Browser browser(first);
  ASSERT_EQ(Select("title=First"), Succeeded());
  const auto tab =
      reinterpret_cast<ULONG_PTR>(FindWindowExW(browser.Frame(), nullptr, L"Frame Tab", nullptr));
  char hexadecimal[32];
  std::snprintf(hexadecimal, sizeof hexadecimal, "0x%llX", static_cast<unsigned long long>(tab));
  EXPECT_EQ(Select("handle=" + std::to_string(tab)), Succeeded());
  EXPECT_EQ(Select(std::string("handle=") + hexadecimal), Succeeded());
  EXPECT_EQ(Call("currenturl"), Answered(first));
}

std::string TitleOf(HWND window) {
  char text[200] = "";
  GetWindowTextA(window, text, sizeof text);
  return text;
}

/// Whether something comes true within five seconds.
template <class Condition>
bool Eventually(Condition condition) {
  for (int round = 0; round < 100; ++round) {
    if (condition()) return true;
    Sleep(50);
  }
  return false;
}

TEST_F(BrowserSession, HostedTabsAreCountedActivatedAndClosed) {
  const Browser browser(first, Shell::kHosted);
  ASSERT_EQ(Select("title=First"), Succeeded());
  for (const std::string& url : {second, third}) {
    ASSERT_EQ(Call("open", {{"target", url}, {"by", "_blank"}, {"resize-max", "False"}}), Succeeded());
    EXPECT_EQ(Call("currenturl"), Answered(url));
  }
  // The active tab is the first in Z order, and a number counts every tab of the frame.
  EXPECT_EQ(Select("index=0"), Succeeded());
  EXPECT_EQ(Call("currenturl"), Answered(third));
  EXPECT_EQ(Select("index=2"), Succeeded());
  EXPECT_EQ(Select("index=3"), Failed("Browser not found!"));

  EXPECT_EQ(Call("selectwindow", {{"target", "title=First"}}), Succeeded());
  EXPECT_EQ(TitleOf(browser.Frame()).substr(0, 5), "First");
  EXPECT_EQ(Call("gettext", {{"target", "id=p"}}), Answered("one"));
  EXPECT_EQ(Call("click", {{"target", "id=b"}, {"manual-click", "True"}}), Succeeded());
  EXPECT_TRUE(Eventually([] { return Call("gettext", {{"target", "id=b"}}) == Answered("clicked"); }));

  // Closed by its shortcut, and no target afterwards.
  EXPECT_EQ(Call("close"), Succeeded());
  EXPECT_EQ(Call("currenturl"), Failed("Browser not found!"));
  EXPECT_TRUE(Eventually([] { return Select("title=First") == Failed("Browser not found!"); }));
  EXPECT_EQ(Select("title=Second page"), Succeeded());
  EXPECT_EQ(Call("close", {{"option", "others"}}), Succeeded());
  EXPECT_EQ(Call("refresh"), Failed("Refresh Fail!"));
  EXPECT_TRUE(Eventually([] { return Select("title=Third") == Failed("Browser not found!"); }));
  EXPECT_EQ(Select("title=Second page"), Succeeded());
  EXPECT_EQ(Call("quit"), Succeeded());
  EXPECT_TRUE(Eventually([&] { return browser.Frame() == nullptr; }));
  EXPECT_EQ(Call("forward"), Failed("Frame not found!"));
}

TEST_F(BrowserSession, EachKindOfFrameNavigatesItsHistoryAndTakesASize) {
  for (const Shell shell : {Shell::kClassic, Shell::kHosted}) {
    SCOPED_TRACE(shell == Shell::kHosted ? "hosted" : "classic");
    const Browser browser(first, shell);
    ASSERT_EQ(Select("title=First"), Succeeded());
    EXPECT_EQ(Call("back"), Failed("Go back Fail!"));
    EXPECT_EQ(Call("open", {{"target", second}, {"resize-max", "False"}}), Succeeded());
    EXPECT_EQ(Call("back"), Succeeded());
    EXPECT_TRUE(Eventually([] { return Call("currenturl") == Answered(first); }));
    EXPECT_EQ(Call("forward"), Succeeded());
    EXPECT_TRUE(Eventually([] { return Call("currenturl") == Answered(second); }));
    ASSERT_EQ(Select("title=Second page"), Succeeded());
    EXPECT_EQ(Call("executescript", {{"value", "document.title = 'scripted'"}}), Answered("scripted"));
    EXPECT_EQ(Call("refresh"), Succeeded());
    EXPECT_TRUE(Eventually([] { return Select("title=Second page") == Succeeded(); }));

    EXPECT_EQ(Call("selectwindowsize", {{"target", "700,500"}}), Succeeded());
    RECT rect = {};
    GetWindowRect(browser.Frame(), &rect);
    EXPECT_EQ(std::pair(rect.right - rect.left, rect.bottom - rect.top), std::pair(700L, 500L));
    EXPECT_EQ(Call("selectwindowsize", {{"target", "90000,500"}}), Failed("Select window size Fail!"));
    EXPECT_EQ(Call("selectwindowsize", {{"target", "max"}}), Succeeded());
    EXPECT_NE(IsZoomed(browser.Frame()), FALSE);
    EXPECT_EQ(Call("selectwindowsize", {{"target", "710,510"}}), Succeeded());
    EXPECT_EQ(IsZoomed(browser.Frame()), FALSE);
  }
}

std::string HandleOf(HWND window) { return "handle=" + std::to_string(reinterpret_cast<ULONG_PTR>(window)); }

// A dialog that opens a dialog: each is a surface of its own, and its opener goes on when it closes.
TEST_F(BrowserSession, ModalDialogsAreSurfacesOneOnTopOfTheOther) {
  server->Page("/inner",
               "<!doctype html><title>Inner</title><button id=end onclick=\"returnValue = 'deep';"
               "window.close()\">end</button>");
  const std::string outer =
      server->Page("/outer",
                   "<!doctype html><title>Outer</title><input id=given><button id=more onclick=\""
                   "given.value = showModalDialog('/inner')\">more</button>"
                   "<button id=end onclick=\"returnValue = document.getElementById('given').value;"
                   "window.close()\">end</button>");
  const Browser browser(
      server->Page("/opener",
                   "<!doctype html><title>Opener</title><p id=p></p><button id=open onclick=\""
                   "p.innerText = showModalDialog('/outer')\">open</button>"));
  ASSERT_EQ(Select("title=Opener"), Succeeded());
  EXPECT_EQ(Call("click", {{"target", "id=open"}}), StillRunning());
  ASSERT_TRUE(Eventually([] { return Select("title=Outer") == Succeeded(); }));
  EXPECT_EQ(Call("selectwindow", {{"target", "xpath=//input[@id='given']"}}), Succeeded());
  const HWND dialog = FindWindowW(L"Internet Explorer_TridentDlgFrame", nullptr);
  EXPECT_EQ(Select("title=Opener"), Succeeded());
  EXPECT_EQ(Select(HandleOf(dialog)), Succeeded());
  EXPECT_EQ(Call("currenturl"), Answered(outer));
  for (const auto& [command, message] :
       {std::pair("back", "Go back Fail!"), std::pair("forward", "Go forward Fail!"),
        std::pair("refresh", "Refresh Fail!")}) {
    EXPECT_EQ(Call(command), Failed(message));
  }
  EXPECT_EQ(Call("type_m", {{"target", "id=given"}, {"value", "typed"}}), Succeeded());
  EXPECT_EQ(Call("click", {{"target", "id=more"}}), StillRunning());
  ASSERT_TRUE(Eventually([] { return Select("title=Inner") == Succeeded(); }));
  EXPECT_EQ(Call("click", {{"target", "id=end"}}).success, true);
  EXPECT_TRUE(Eventually([] { return Select("title=Inner") == Failed("Browser not found!"); }));
  ASSERT_EQ(Select("title=Outer"), Succeeded());
  EXPECT_TRUE(Eventually([] {
    return Call("executescript", {{"value", "document.getElementById('given').value"}}) == Answered("deep");
  }));
  EXPECT_EQ(Call("click", {{"target", "id=end"}}).success, true);
  EXPECT_TRUE(Eventually([] {
    return Select("title=Opener") == Succeeded() && Call("gettext", {{"target", "id=p"}}) == Answered("deep");
  }));

  // A dialog is closed as a window too, and answers nothing then.
  EXPECT_EQ(Call("click", {{"target", "id=open"}}), StillRunning());
  ASSERT_TRUE(Eventually([] { return Select("title=Outer") == Succeeded(); }));
  EXPECT_EQ(Call("close"), Succeeded());
  EXPECT_TRUE(Eventually([] { return Select("title=Outer") == Failed("Browser not found!"); }));
}

const std::string kHangSoon = "setTimeout(function () { " + PageServer::HoldForEver() + " }, 0)";

// A new tab is asked through its own window: its frame's answers whatever the page does.
TEST_F(BrowserSession, APageThatHangsByItselfFailsWhatIsAsked) {
  const Browser browser(first);
  ASSERT_EQ(Select("title=First"), Succeeded());
  ASSERT_EQ(Call("open", {{"target", second}, {"by", "_blank"}, {"resize-max", "False"}}), Succeeded());
  ASSERT_TRUE(Call("executescript", {{"value", kHangSoon}}).success);
  Sleep(1000);
  const ULONGLONG start = GetTickCount64();
  EXPECT_EQ(Call("gettext", {{"target", "id=p"}}), Failed("Element not found!"));
  EXPECT_EQ(Call("open", {{"target", first}}), Failed("Open new tab failed!"));
  EXPECT_EQ(Call("refresh"), Failed("Refresh Fail!"));
  EXPECT_EQ(Select("title=Second page"), Failed("Browser not found!"));
  EXPECT_EQ(Call("quit"), Succeeded());
  // Three commands on the selected page that wait for it, a search that does not, and the closing.
  EXPECT_LT(GetTickCount64() - start, 35000U);
}

/// Lets the selected page compute for a time, from half a second on.
void KeepBusy(int ms) {
  const std::string script = "setTimeout(function () { " + PageServer::Hold(ms) + " }, 500)";
  ASSERT_TRUE(Call("executescript", {{"value", script}}).success);
  Sleep(1000);
}

TEST_F(BrowserSession, CommandsWaitForAPageThatComputes) {
  const Browser browser(first);
  const struct {
    const char* command;
    Parameters parameters;
    Envelope answer;
  } rows[] = {
      {"gettext", {{"target", "id=p"}}, Answered("one")},
      {"currenturl", {}, Answered(first)},
      {"selectwindowsize", {{"target", "700,500"}}, Succeeded()},
      {"open", {{"target", second}, {"resize-max", "False"}}, Succeeded()},
  };
  for (const auto& row : rows) {
    // The command before may have returned while the page still computed.
    ASSERT_TRUE(Eventually([] { return Select("title=First") == Succeeded(); }));
    KeepBusy(3500);
    EXPECT_EQ(Call(row.command, row.parameters), row.answer) << row.command;
  }
  // The search over many windows does not wait so long, and the page-load wait does.
  ASSERT_EQ(Select("title=Second page"), Succeeded());
  KeepBusy(4000);
  EXPECT_EQ(Call("selectwindowuntop", {{"target", "title=Second page"}}), Failed("Browser not found!"));
  EXPECT_EQ(Call("gettext", {{"target", "id=p"}}), Answered("two"));
}

// The frame closes, which `quit` asks for without a question to the page. `close` has asked the page: only a frame
// that does not hang with its tab can take the message.
TEST_F(BrowserSession, APageThatHangsIsClosed) {
  for (const Shell shell : {Shell::kClassic, Shell::kHosted}) {
    for (const char* command : {"quit", "close"}) {
      SCOPED_TRACE(command + std::string(shell == Shell::kHosted ? " hosted" : " classic"));
      const Browser browser(first, shell);
      ASSERT_EQ(Select("title=First"), Succeeded());
      const bool is_close = command == std::string("close");
      if (is_close) browser.SetSwitch(L"hung-frame=answers");
      ASSERT_TRUE(Call("executescript", {{"value", kHangSoon}}).success);
      Sleep(500);
      const ULONGLONG start = GetTickCount64();
      if (is_close) {
        EXPECT_EQ(Call("close", {{"option", "others"}}), Failed("Close failed!"));
      }
      EXPECT_EQ(Call(command), Succeeded());
      EXPECT_LT(GetTickCount64() - start, 30000U);
      EXPECT_TRUE(Eventually([&] { return browser.Frame() == nullptr; }));
    }
  }
}

// A tab that was taken out of its frame has no window to close.
TEST_F(BrowserSession, AHostedTabWithoutItsFrameCannotQuit) {
  const Browser browser(first, Shell::kHosted);
  ASSERT_EQ(Select("title=First"), Succeeded());
  HWND tab = FindWindowExW(browser.Frame(), nullptr, L"AtlAxWin100", nullptr);
  const HWND elsewhere = CreateWindowW(L"Static", L"elsewhere", WS_OVERLAPPEDWINDOW, 0, 0, 100, 100, nullptr,
                                       nullptr, nullptr, nullptr);
  ASSERT_NE(SetParent(tab, elsewhere), nullptr);
  EXPECT_EQ(Call("quit"), Failed("Quit failed!"));
  SetParent(tab, browser.Frame());
  DestroyWindow(elsewhere);
  EXPECT_EQ(Call("quit"), Succeeded());
}

TEST_F(BrowserSession, EveryWindowOfABrowserNamesItsSurface) {
  for (const Shell shell : {Shell::kClassic, Shell::kHosted}) {
    SCOPED_TRACE(shell == Shell::kHosted ? "hosted" : "classic");
    const Browser browser(first, shell);
    ASSERT_EQ(Select("title=First"), Succeeded());
    for (HWND window = browser.Page(); window != nullptr; window = GetAncestor(window, GA_PARENT)) {
      if (window == GetDesktopWindow()) break;
      EXPECT_EQ(Select(HandleOf(window)), Succeeded());
      EXPECT_EQ(Call("currenturl"), Answered(first));
    }
  }
  EXPECT_EQ(Select(HandleOf(GetDesktopWindow())), Failed("Browser not found!"));
}

TEST_F(BrowserSession, ABrowserStartedForAnAddressItRefusesIsClosed) {
  {
    const Browser browser(first);
    ASSERT_EQ(Select("title=First"), Succeeded());
    ASSERT_EQ(Call("quit"), Succeeded());
  }
  EXPECT_EQ(Call("open", {{"target", ""}}), Failed("Open new tab failed!"));
  EXPECT_TRUE(Eventually([] { return FindWindowW(L"IEFrame", nullptr) == nullptr; }));
  EndStartedBrowsers();
}

// A tab that cannot answer while the tabs are compared is no new one when it can again.
TEST_F(BrowserSession, ANewTabIsNeverAnOldOneThatWasBusy) {
  const Browser browser(first);
  ASSERT_EQ(Select("title=First"), Succeeded());
  ASSERT_EQ(Call("open", {{"target", second}, {"by", "_blank"}, {"resize-max", "False"}}), Succeeded());
  ASSERT_EQ(Call("open", {{"target", third}, {"by", "_blank"}, {"resize-max", "False"}}), Succeeded());
  EXPECT_EQ(Call("currenturl"), Answered(third));
}

/// A frame as Internet Explorer's, with one tab, in which the pages of other processes can be put.
class FrameOfOtherPages {
 public:
  FrameOfOtherPages() {
    for (const wchar_t* name : {L"IEFrame", L"Frame Tab"}) {
      WNDCLASSW window_class = {};
      window_class.lpfnWndProc = DefWindowProcW;
      window_class.lpszClassName = name;
      RegisterClassW(&window_class);
    }
    frame_ = CreateWindowW(L"IEFrame", L"frame", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 600, 400, nullptr,
                           nullptr, nullptr, nullptr);
    tab_ = CreateWindowW(L"Frame Tab", L"", WS_CHILD | WS_VISIBLE, 0, 0, 500, 300, frame_, nullptr, nullptr,
                         nullptr);
  }
  FrameOfOtherPages(const FrameOfOtherPages&) = delete;
  FrameOfOtherPages& operator=(const FrameOfOtherPages&) = delete;
  ~FrameOfOtherPages() { DestroyWindow(frame_); }

  HWND tab() const { return tab_; }
  void Take(const Browser& browser) const {
    SetParent(FindWindowExW(FindWindowExW(browser.Frame(), nullptr, L"Frame Tab", nullptr), nullptr,
                            L"TabWindowClass", nullptr),
              tab_);
  }

 private:
  HWND frame_;
  HWND tab_;
};

// A page that moves to another process gets a new browser object behind the same tab.
TEST_F(BrowserSession, ATabIsFoundAgainWhenItsProcessIsReplaced) {
  const FrameOfOtherPages frame;
  Browser before(first);
  const Browser after(second);
  frame.Take(before);
  ASSERT_EQ(Select(HandleOf(frame.tab())), Succeeded());
  ASSERT_EQ(Call("gettext", {{"target", "id=p"}}), Answered("one"));
  before.Kill();
  frame.Take(after);
  EXPECT_EQ(Call("gettext", {{"target", "id=p"}}), Answered("two"));
  EXPECT_EQ(Call("currenturl"), Answered(second));
  EXPECT_EQ(Call("back"), Failed("Go back Fail!"));
}

// Whatever was asked when the browser died, an answer comes soon, and a new browser is as good as the old
// one.
TEST_F(BrowserSession, ACrashFailsWhatIsAskedAndNothingAfterwards) {
  const struct {
    const char* command;
    Parameters parameters;
    const char* message;
  } rows[] = {
      {"click", {{"target", "id=b"}}, "Element not found!"},
      {"gettext", {{"target", "id=p"}}, "Element not found!"},
      {"executescript", {{"value", "1"}}, "Frame not found!"},
      {"refresh", {}, "Refresh Fail!"},
      {"back", {}, "Go back Fail!"},
      {"currenturl", {}, "Frame not found!"},
      {"selectframe", {{"target", "index=0"}}, "Frame not found!"},
      {"sendkeys", {{"target", "id=p"}, {"value", "x"}}, "Element not found!"},
      {"close", {}, "Close failed!"},
  };
  for (const Shell shell : {Shell::kClassic, Shell::kHosted}) {
    SCOPED_TRACE(shell == Shell::kHosted ? "hosted" : "classic");
    auto browser = std::make_unique<Browser>(first, shell);
    ASSERT_EQ(Select("title=First"), Succeeded());
    std::jthread killer([&] {
      Sleep(1500);
      browser->Kill();
    });
    const ULONGLONG start = GetTickCount64();
    EXPECT_EQ(Call("waitshow", {{"target", "id=never"}}),
              (Envelope{false, "false", "Wait element show failed!"}));
    EXPECT_LT(GetTickCount64() - start, 12000U);
    for (const auto& row : rows) {
      EXPECT_EQ(Call(row.command, row.parameters), Failed(row.message)) << row.command;
    }
    EXPECT_LT(GetTickCount64() - start, 20000U);
  }
  const Browser browser(second);
  EXPECT_EQ(Select("title=Second page"), Succeeded());
  EXPECT_EQ(Call("gettext", {{"target", "id=p"}}), Answered("two"));
}

}  // namespace
}  // namespace quillmate::test
