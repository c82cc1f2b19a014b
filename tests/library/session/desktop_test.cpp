// Other windows of the desktop: some vanish while they are looked at, some hang in the foreground, and a tab
// may share its frame with more than its page.
#include <windows.h>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <gtest/gtest.h>
#include <memory>
#include <thread>
#include <utility>
#include <vector>

#include "support/browser.h"
#include "support/import_hook.h"
#include "support/library.h"
#include "support/page_server.h"

namespace quillmate::test {
namespace {

class Desktop : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    server = std::make_unique<PageServer>();
    page = server->Page("/page",
                        "<!doctype html><title>Page</title><p id=p>text</p><input id=field>"
                        "<button id=b onclick=\"this.innerText = 'clicked'\">b</button>");
  }
  static void TearDownTestSuite() { server.reset(); }

  /// Selects the page of a browser that was just started.
  static void SelectPage() {
    Envelope selected;
    for (int round = 0; round < 50 && !selected.success; ++round) {
      selected = Call("selectwindowuntop", {{"target", "title=Page"}, {"tab-status", "loading"}});
    }
    ASSERT_EQ(selected, Succeeded());
  }

  static inline std::unique_ptr<PageServer> server;
  static inline std::string page;
};

HWND MakeWindow(const wchar_t* class_name, HWND parent) {
  WNDCLASSW look = {};
  look.lpfnWndProc = DefWindowProcW;
  look.lpszClassName = class_name;
  RegisterClassW(&look);
  const DWORD style = parent != nullptr ? WS_CHILD : WS_OVERLAPPEDWINDOW;
  return CreateWindowW(class_name, L"other", style | WS_VISIBLE, 0, 0, 300, 200, parent, nullptr, nullptr,
                       nullptr);
}

/// Destroyed as soon as the library has looked at it.
HWND vanishing = nullptr;

int WINAPI GetClassNameOnce(HWND window, wchar_t* name, int size) {
  const int length = GetClassNameW(window, name, size);
  if (window == vanishing) DestroyWindow(std::exchange(vanishing, nullptr));
  return length;
}

TEST_F(Desktop, AWindowThatVanishesCostsItselfOnly) {
  for (const Shell shell : {Shell::kClassic, Shell::kHosted}) {
    SCOPED_TRACE(shell == Shell::kHosted ? "hosted" : "classic");
    const Browser browser(page, shell);
    ASSERT_NO_FATAL_FAILURE(SelectPage());
    // The shell's list would find what the walk over the windows has lost.
    browser.SetSwitch(L"shell-list=no");
    const ImportHook hook("GetClassNameW", GetClassNameOnce);
    ASSERT_TRUE(hook.IsInForce());
    HWND other = MakeWindow(L"IEFrame", nullptr);
    SetWindowPos(other, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    vanishing = other;
    EXPECT_EQ(Call("selectwindowuntop", {{"target", "title=Page"}}), Succeeded());
    EXPECT_EQ(vanishing, nullptr) << "not looked at";
    EXPECT_FALSE(IsWindow(other));
  }
}

/// A window in the foreground whose thread may take no messages.
class ForegroundWindow {
 public:
  explicit ForegroundWindow(bool hangs) : hangs_(hangs), thread_([this] { Run(); }) {
    while (!ready_) Sleep(5);
  }
  ForegroundWindow(const ForegroundWindow&) = delete;
  ForegroundWindow& operator=(const ForegroundWindow&) = delete;
  ~ForegroundWindow() {
    over_ = true;
    thread_.join();
  }
  DWORD thread_id() const { return GetWindowThreadProcessId(window_, nullptr); }
  bool IsInFront() const { return GetForegroundWindow() == window_; }

 private:
  void Run() {
    window_ = MakeWindow(L"OtherProgram", nullptr);
    SetForegroundWindow(window_);
    TakeMessages();
    ready_ = true;
    while (!over_) {
      if (!hangs_) TakeMessages();
      Sleep(10);
    }
    DestroyWindow(window_);
  }
  static void TakeMessages() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
  }

  const bool hangs_;
  HWND window_ = nullptr;
  std::atomic<bool> ready_ = false;
  std::atomic<bool> over_ = false;
  std::thread thread_;
};

std::vector<DWORD> attached;

BOOL WINAPI NoteAttachment(DWORD from, DWORD to, BOOL attach) {
  if (attach) attached.push_back(to);
  return AttachThreadInput(from, to, attach);
}

// Sharing the input of a thread that hangs would make the command wait for it.
TEST_F(Desktop, AProgramThatHangsInFrontIsPassed) {
  const Browser browser(page);
  ASSERT_NO_FATAL_FAILURE(SelectPage());
  const ImportHook hook("AttachThreadInput", NoteAttachment);
  ASSERT_TRUE(hook.IsInForce());
  for (const bool hangs : {false, true}) {
    SCOPED_TRACE(hangs ? "hangs" : "responds");
    const ForegroundWindow other(hangs);
    ASSERT_TRUE(other.IsInFront());
    attached.clear();
    const ULONGLONG begin = GetTickCount64();
    EXPECT_EQ(Call("selectwindow", {{"target", "title=Page"}}), Succeeded());
    EXPECT_LT(GetTickCount64() - begin, 10'000u);
    EXPECT_EQ(std::ranges::count(attached, other.thread_id()) != 0, !hangs);
    EXPECT_EQ(GetForegroundWindow(), browser.Frame());
  }
}

HWND HostedTab(const Browser& browser) {
  return FindWindowExW(browser.Frame(), nullptr, L"AtlAxWin100", nullptr);
}

RECT PlaceOf(HWND window) {
  RECT place = {};
  GetWindowRect(window, &place);
  return place;
}

// The frame of a hosted tab has a tab strip and more above the page. Its tab's own window keeps its place.
TEST_F(Desktop, KeysAndClicksLeaveTheStripOfAHostingFrame) {
  const Browser browser(page, Shell::kHosted);
  ASSERT_NO_FATAL_FAILURE(SelectPage());
  ASSERT_EQ(Call("selectwindow", {{"target", "title=Page"}}), Succeeded());
  HWND tab = HostedTab(browser);
  RECT frame = {};
  GetClientRect(browser.Frame(), &frame);
  constexpr int kStrip = 90;
  SetWindowPos(tab, nullptr, 0, kStrip, frame.right, frame.bottom - kStrip, SWP_NOZORDER | SWP_NOACTIVATE);
  const RECT place = PlaceOf(tab);
  const struct {
    const char* command;
    Parameters parameters;
  } rows[] = {
      {"sendkeys", {{"target", "id=field"}, {"value", "x"}}},
      {"type_m", {{"target", "id=field"}, {"value", "y"}}},
      {"clear", {{"target", "id=field"}}},
      {"click", {{"target", "id=b"}, {"manual-click", "True"}}},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Call(row.command, row.parameters), Succeeded()) << row.command;
    EXPECT_FALSE(IsZoomed(tab)) << row.command;
    const RECT now = PlaceOf(tab);
    EXPECT_TRUE(EqualRect(&now, &place)) << row.command;
    EXPECT_TRUE(IsZoomed(browser.Frame()));
  }
  EXPECT_EQ(Call("gettext", {{"target", "id=b"}}), Answered("clicked"));
}

}  // namespace
}  // namespace quillmate::test
