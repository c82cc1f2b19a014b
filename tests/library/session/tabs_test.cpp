// Tabs of one frame, pages that go on loading, and browsers that commands start.
#include <windows.h>
#include <exdisp.h>
#include <objbase.h>
#include <filesystem>
#include <fstream>
#include <set>

#include "support/call_filter.h"
#include "support/import_hook.h"
#include "support/page_test.h"

namespace quillmate::test {
namespace {

class Tabs : public PageTest {
 protected:
  static HWND Frame() { return TheBrowser().Frame(); }
  static int TabsOfFrame() {
    int count = 0;
    for (HWND tab = nullptr; (tab = FindWindowExW(Frame(), tab, L"Frame Tab", nullptr)) != nullptr;) ++count;
    return count;
  }
  static std::string FrameTitle() {
    char text[300] = "";
    GetWindowTextA(Frame(), text, sizeof text);
    return text;
  }
  static bool Closes(int left) {
    for (int round = 0; round < 100 && TabsOfFrame() != left; ++round) Sleep(50);
    return TabsOfFrame() == left;
  }
  static Envelope OpenTab(const std::string& url) {
    return Call("open", {{"target", url}, {"by", "_blank"}, {"resize-max", "False"}});
  }
  static Envelope Select(const char* command, const std::string& target) {
    return Call(command, {{"target", target}, {"tab-status", "loading"}});
  }
  /// Selects a window once it is there.
  static Envelope SelectOnce(const std::string& target) {
    Envelope found;
    for (int round = 0; round < 100 && !found.success; ++round) {
      if (round > 0) Sleep(100);
      found = Call("selectwindowuntop", {{"target", target}});
    }
    return found;
  }
  /// A page of a local file has no title: its tab shows the address.
  static std::string UntitledFile() {
    const auto file = std::filesystem::temp_directory_path() / "untitled.html";
    std::ofstream(file) << "<!doctype html><p id=p>file</p>";
    return "file:///" + file.generic_string();
  }
};

TEST_F(Tabs, EachIsFoundBroughtForwardAndClosed) {
  const std::string first = Serve("/first", "<!doctype html><title>First</title><p id=p>first</p>");
  const std::string second = Serve("/second", "<!doctype html><title>Second</title><p id=p>second</p>");
  const std::string file = UntitledFile();
  ASSERT_EQ(Call("open", {{"target", first}}), Succeeded());
  ShowWindow(Frame(), SW_RESTORE);
  ASSERT_EQ(OpenTab(second), Succeeded());
  ASSERT_EQ(OpenTab(file), Succeeded());
  EXPECT_FALSE(IsZoomed(Frame())) << "opened without a change of size";
  ASSERT_EQ(TabsOfFrame(), 3);
  for (const char* index : {"index=0", "index=1", "index=2"}) {
    EXPECT_EQ(Select("selectwindowuntop", index), Succeeded()) << "a number counts every tab of the frame";
  }
  EXPECT_EQ(Select("selectwindowuntop", "index=3"), Failed("Browser not found!"));

  const struct {
    std::string target;
    const char* text;
    std::string title;
  } rows[] = {{"title=First", "first", "First"},
              {"title=Second", "second", "Second"},
              {"url=" + file, "file", file.substr(7)},
              {"title=First", "first", "First"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.target);
    ShowWindow(Frame(), SW_SHOWMINNOACTIVE);
    EXPECT_EQ(Select("selectwindow", row.target), Succeeded());
    EXPECT_EQ(Call("gettext", {{"target", "id=p"}}), Answered(row.text));
    EXPECT_TRUE(FrameTitle().starts_with(row.title)) << FrameTitle();
    EXPECT_TRUE(IsZoomed(Frame())) << "deliberate: element positions assume it";
  }

  ASSERT_EQ(Select("selectwindowuntop", "title=Second"), Succeeded());
  EXPECT_EQ(Call("close"), Succeeded());
  EXPECT_TRUE(Closes(2));
  EXPECT_EQ(Select("selectwindowuntop", "title=Second"), Failed("Browser not found!"));
  ASSERT_EQ(Select("selectwindowuntop", "url=" + file), Succeeded());
  EXPECT_EQ(Call("close", {{"option", "others"}}), Succeeded());
  EXPECT_TRUE(Closes(1));
  EXPECT_EQ(Select("selectwindowuntop", "url=" + file), Succeeded());
}

TEST_F(Tabs, ASurfaceThatCannotBeBroughtForwardStaysSelected) {
  RestartBrowser();
  const CallFilter filter(TheBrowser().Page());
  std::set<std::string> messages;
  for (int position = 1; position < 60; ++position) {
    filter.Reset();
    filter.Refuse(position);
    const Envelope answer = Select("selectwindow", "title=start");
    const bool refused = filter.Refused() != 0;
    filter.Reset();
    if (!refused) break;
    if (!answer.success) messages.insert(answer.log);
    if (answer.log == "Failed to place the web page to top!") {
      EXPECT_EQ(Call("executescript", {{"value", "document.title"}}), Answered("start"));
    }
  }
  // A search that fails in one way goes on in another, so no single refusal keeps the surface from being found.
  EXPECT_EQ(messages, (std::set<std::string>{"Failed to place the web page to top!"}));
}

// The page's parser waits for a script that never comes.
TEST_F(Tabs, APageThatGoesOnLoadingIsBusyAndCanBeRead) {
  Serve("/loading",
        "<!doctype html><title>Loading</title><p id=p>here</p><button id=end "
        "onclick='window.close()'>end</button><script src='/endless'></script>");
  Show(
      "<!doctype html><title>Opener</title><a id=go href=/loading>go</a>"
      "<button id=ask onclick=\"showModalDialog('/loading')\">ask</button>");
  for (const char* opener : {"id=ask", "id=go"}) {
    SCOPED_TRACE(opener);
    ASSERT_TRUE(Call("click", {{"target", opener}}).success);
    ASSERT_EQ(SelectOnce("title=Loading"), Succeeded());
    EXPECT_EQ(Select("selectwindowuntop", "title=Loading"), Failed("The page load timeout."));
    EXPECT_EQ(Call("gettext", {{"target", "id=p"}}), Answered("here"));
    if (opener == std::string("id=go")) {
      EXPECT_EQ(Call("refresh"), Failed("Frame not found!"));
      continue;
    }
    EXPECT_EQ(Call("close"), Succeeded());
    ASSERT_EQ(SelectOnce("title=Opener"), Succeeded());
    ASSERT_EQ(Select("selectwindowuntop", "title=Opener"), Succeeded());
  }
  RestartBrowser();
}

HRESULT WINAPI RefuseBrowserObject(REFCLSID clsid, IUnknown* outer, DWORD context, REFIID iid,
                                   void** object) {
  if (IsEqualCLSID(clsid, CLSID_InternetExplorer)) return REGDB_E_CLASSNOTREG;
  return CoCreateInstance(clsid, outer, context, iid, object);
}

BOOL WINAPI RefuseProcess(const wchar_t*, wchar_t*, SECURITY_ATTRIBUTES*, SECURITY_ATTRIBUTES*, BOOL, DWORD,
                          void*, const wchar_t*, STARTUPINFOW*, PROCESS_INFORMATION*) {
  SetLastError(ERROR_FILE_NOT_FOUND);
  return FALSE;
}

/// A program that came too late for the command may be there as well, hidden.
HWND ShownFrame() {
  HWND frame = nullptr;
  while ((frame = FindWindowExW(nullptr, frame, L"IEFrame", nullptr)) != nullptr) {
    if (IsWindowVisible(frame)) return frame;
  }
  return nullptr;
}

void ExpectAShownBrowserAndEndIt() {
  EXPECT_NE(ShownFrame(), nullptr);
  EXPECT_EQ(Call("currenturl"), Answered("about:blank"));
  EXPECT_EQ(Call("quit"), Succeeded());
  for (int round = 0; round < 100 && ShownFrame() != nullptr; ++round) Sleep(50);
  EXPECT_EQ(ShownFrame(), nullptr);
}

// Written last: the browser that the tests share is gone.
TEST_F(Tabs, ABrowserIsStartedInTwoWays) {
  EXPECT_EQ(Call("quit"), Succeeded());
  TheBrowser().Kill();
  EXPECT_EQ(Call("new_browser"), Succeeded());
  ExpectAShownBrowserAndEndIt();
  const ImportHook object("CoCreateInstance", RefuseBrowserObject);
  ASSERT_TRUE(object.IsInForce());
  // A program that is not up after the library's six seconds counts as not started; a busy machine may need more.
  Envelope started;
  for (int tries = 0; tries < 4 && !started.success; ++tries) {
    EndStartedBrowsers();
    started = Call("new_browser");
  }
  EXPECT_EQ(started, Succeeded());
  ExpectAShownBrowserAndEndIt();
  const ImportHook process("CreateProcessW", RefuseProcess);
  ASSERT_TRUE(process.IsInForce());
  EXPECT_EQ(Call("new_browser"), Failed("Open new browser failed!"));
  EXPECT_EQ(Call("open", {{"target", "about:blank"}}), Failed("Open new tab failed!"));
  EndStartedBrowsers();
}

}  // namespace
}  // namespace quillmate::test
