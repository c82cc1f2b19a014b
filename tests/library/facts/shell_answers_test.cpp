// The questions about windows, tabs, boxes and the shell's list to which nobody knows the answer: the commands that
// meet them, run under each answer that is possible. A command is right under every one, or fails with its message.
#include <windows.h>
#include <functional>
#include <gtest/gtest.h>
#include <memory>

#include "com/encoding.h"
#include "support/browser.h"
#include "support/library.h"
#include "support/page_server.h"

namespace quillmate::test {
namespace {

/// Whether something comes true within ten seconds.
bool Eventually(const std::function<bool()>& condition) {
  for (int round = 0; round < 200; ++round) {
    if (condition()) return true;
    Sleep(50);
  }
  return false;
}

Envelope Select(const std::string& target) {
  return Call("selectwindowuntop", {{"target", target}, {"tab-status", "loading"}});
}
Envelope BringForward(const std::string& target) { return Call("selectwindow", {{"target", target}}); }
Envelope TextOf(const std::string& target) { return Call("gettext", {{"target", target}}); }

const Envelope kNoBrowser = Failed("Browser not found!");

HWND BoxOf(const std::wstring& title) {
  HWND box = FindWindowW(L"#32770", title.c_str());
  return IsWindowVisible(box) ? box : nullptr;
}

/// A browser for all switches, with two tabs that stay; each test brings the switches back.
class ShellAnswers : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    desk = std::make_unique<Desk>();
    ASSERT_TRUE(Eventually([] { return Select("title=First") == Succeeded(); }));
    ASSERT_EQ(Call("open", {{"target", desk->second}, {"by", "_blank"}, {"resize-max", "False"}}),
              Succeeded());
    ASSERT_EQ(Call("currenturl"), Answered(desk->second));
  }
  static void TearDownTestSuite() { desk.reset(); }

  void TearDown() override {
    for (const std::string& name : chosen_) Set(name + "=");
    chosen_.clear();
  }

  void Choose(const std::string& choice) {
    chosen_.push_back(choice.substr(0, choice.find('=')));
    Set(choice);
  }
  static void Set(const std::string& choice, HWND page = desk->browser.Page()) {
    const ATOM atom = GlobalAddAtomW(com::FromUtf8(choice).c_str());
    SendMessageW(page, RegisterWindowMessageW(L"testbrowser switch"), atom, 0);
    GlobalDeleteAtom(atom);
  }

  /// Brings the first tab forward and has it ask something. @return whether the box is there.
  static bool Raise(const std::wstring& title = L"Message from webpage") {
    EXPECT_TRUE(Eventually([] { return BringForward("title=First") == Succeeded(); }));
    EXPECT_EQ(Call("click", {{"target", "id=ask"}}), StillRunning());
    return Eventually([&] { return BoxOf(title) != nullptr; });
  }
  static bool IsAnswered() {
    return Eventually([] { return TextOf("id=said") == Answered("answered"); });
  }

  struct Desk {
    PageServer server;
    std::string first = server.Page(
        "/first",
        "<!doctype html><title>First</title><p id=said>not</p><button id=ask onclick=\"said.innerText = "
        "'not'; alert('Q?'); said.innerText = 'answered'\">ask</button>");
    std::string second = server.Page("/second",
                                     "<!doctype html><title>Second</title><p id=p>two</p><button id=press "
                                     "onclick=\"p.innerText = 'pressed'\">press</button>");
    Browser browser{first};
  };
  static inline std::unique_ptr<Desk> desk;

 private:
  std::vector<std::string> chosen_;
};

TEST_F(ShellAnswers, ABoxIsKnownByItsOwnerWhateverItsTitle) {
  Choose("box-title=Other");
  ASSERT_TRUE(Raise(L"Other"));
  EXPECT_EQ(Call("assertalert"), Succeeded());
  EXPECT_TRUE(IsAnswered());
}

TEST_F(ShellAnswers, ABoxWithoutAnOwnerIsNotTaken) {
  Choose("box-owner=none");
  ASSERT_TRUE(Raise());
  EXPECT_EQ(Call("assertalert"), Failed("Assertalert failed"));
  SendMessageW(GetDlgItem(BoxOf(L"Message from webpage"), IDCANCEL), BM_CLICK, 0, 0);
  EXPECT_TRUE(IsAnswered());
}

TEST_F(ShellAnswers, ABrowserThatIsBusyUnderABoxIsOnlyRefreshedAfterIt) {
  Choose("busy-under-box=yes");
  ASSERT_TRUE(Raise());
  EXPECT_EQ(Call("refresh"), Failed("Frame not found!"));
  EXPECT_EQ(TextOf("id=said"), Answered("not"));
  EXPECT_EQ(Call("assertalert"), Succeeded());
  EXPECT_TRUE(IsAnswered());
}

TEST_F(ShellAnswers, CallsThatABoxRefusesFailUntilItIsAnswered) {
  ASSERT_TRUE(Raise());
  Choose("box-calls=retry-later");
  EXPECT_EQ(TextOf("id=said"), Failed("Element not found!"));
  EXPECT_EQ(Call("currenturl"), Failed("Frame not found!"));
  EXPECT_EQ(Call("assertalert"), Succeeded());
  EXPECT_TRUE(IsAnswered());
}

TEST_F(ShellAnswers, APageThatRefusesCallsWhileItLoadsIsThereAfterwards) {
  Choose("busy-calls=retry-later");
  EXPECT_TRUE(Eventually([] { return Select("title=Second") == Succeeded(); }));
  EXPECT_EQ(Call("refresh"), Succeeded());
  EXPECT_TRUE(Eventually([] { return TextOf("id=p") == Answered("two"); }));
}

TEST_F(ShellAnswers, TabsAreToldApartWhereverTheirWindowsStand) {
  for (const char* choice :
       {"tab-order=active-last", "inactive-tabs=shown", "tab-name-suffix= - Close tab"}) {
    SCOPED_TRACE(choice);
    Choose(choice);
    for (const char* title : {"title=First", "title=Second"}) {
      EXPECT_EQ(BringForward(title), Succeeded()) << title;
      EXPECT_EQ(Call("currenturl"),
                Answered(title == std::string("title=First") ? desk->first : desk->second));
    }
  }
}

TEST_F(ShellAnswers, AnUntitledFileIsBroughtForward) {
  const std::string file = FilePage("facts.html");
  ASSERT_TRUE(Eventually([] { return Select("title=Second") == Succeeded(); }));
  ASSERT_EQ(Call("open", {{"target", file}, {"resize-max", "False"}}), Succeeded());
  EXPECT_EQ(BringForward("url=" + file), Succeeded());
  ASSERT_EQ(Call("open", {{"target", desk->second}, {"resize-max", "False"}}), Succeeded());
}

TEST_F(ShellAnswers, ANewTabIsFoundWhicheverTabThePointerMeans) {
  Choose("new-tab-pointer=new");
  ASSERT_TRUE(Eventually([] { return Select("title=First") == Succeeded(); }));
  const std::string third = desk->server.Page("/third", "<!doctype html><title>Third</title>");
  EXPECT_EQ(Call("open", {{"target", third}, {"by", "_blank"}, {"resize-max", "False"}}), Succeeded());
  EXPECT_EQ(Call("currenturl"), Answered(third));
  EXPECT_EQ(Call("close"), Succeeded());
  EXPECT_TRUE(Eventually([] { return Select("title=Third") == kNoBrowser; }));
  EXPECT_TRUE(Eventually([] { return Select("title=First") == Succeeded(); }));
  EXPECT_EQ(Call("currenturl"), Answered(desk->first));
}

TEST_F(ShellAnswers, TheShellsListMayHaveGapsAndStrangers) {
  ASSERT_TRUE(Eventually([] { return BringForward("title=Second") == Succeeded(); }));
  for (const char* choice : {"shell-folders=2", "shell-nulls=2"}) {
    Choose(choice);
    EXPECT_EQ(Select("title=First"), Succeeded()) << choice;
    EXPECT_EQ(Call("currenturl"), Answered(desk->first)) << choice;
  }
  // Only the list knows the tabs behind the one in front.
  Choose("shell-list=no");
  EXPECT_EQ(Select("title=First"), kNoBrowser);
  EXPECT_EQ(Select("title=Second"), Succeeded());
}

// Its frame answers, as another process's would, and the list gives it out as any other.
TEST_F(ShellAnswers, ATabThatHangsHidesNoOther) {
  const Browser hanging(desk->server.Page(
      "/hanging",
      "<!doctype html><title>Hanging</title><script>setTimeout(function () { for (var end = Date.now() + "
      "20000; Date.now() < end;); }, 2000)</script>"));
  Set("hung-frame=answers", hanging.Page());
  DWORD_PTR none = 0;
  ASSERT_TRUE(Eventually(
      [&] { return SendMessageTimeoutW(hanging.Page(), WM_NULL, 0, 0, SMTO_ABORTIFHUNG, 300, &none) == 0; }));
  const ULONGLONG start = GetTickCount64();
  EXPECT_EQ(Select("title=First"), Succeeded());
  EXPECT_EQ(Select("title=Nowhere"), kNoBrowser);
  EXPECT_LT(GetTickCount64() - start, 14000U);
}

}  // namespace
}  // namespace quillmate::test
