// Opening pages: commands wait for the new one, however it loads, and find the new tab.
#include <windows.h>
#include <gtest/gtest.h>
#include <memory>

#include "support/browser.h"
#include "support/library.h"
#include "support/page_server.h"

namespace quillmate::test {
namespace {

class PageLoad : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    server = std::make_unique<PageServer>();
    first = server->Page("/first", "<!doctype html><title>First</title><p id=p>one</p>");
    second = server->Page("/second", "<!doctype html><title>Second</title><p id=p>two</p>");
    third = server->Page("/third", "<!doctype html><title>Third</title><p id=p>three</p>");
  }
  static void TearDownTestSuite() { server.reset(); }

  static Envelope Select(const std::string& target) {
    return Call("selectwindowuntop", {{"target", target}, {"tab-status", "loading"}});
  }
  /// Selects the page of a browser that was just started.
  static void SelectStarted(const std::string& target) {
    Envelope selected;
    for (int round = 0; round < 50 && !selected.success; ++round) {
      selected = Call("selectwindowuntop", {{"target", target}});
    }
    ASSERT_EQ(selected, Succeeded());
  }
  static Envelope Open(const std::string& address, const char* by = "") {
    return Call("open", {{"target", address}, {"by", by}, {"resize-max", "False"}});
  }

  static inline std::unique_ptr<PageServer> server;
  static inline std::string first;
  static inline std::string second;
  static inline std::string third;
};

/// A script that computes for a time, from some moment on.
std::string Compute(int from_ms, int ms) {
  return "setTimeout(function () { var end = Date.now() + " + std::to_string(ms) +
         "; while (Date.now() < end); }, " + std::to_string(from_ms) + ")";
}

TEST_F(PageLoad, TheNextCommandMeetsTheNewPage) {
  const Browser browser(first);
  ASSERT_NO_FATAL_FAILURE(SelectStarted("title=First"));
  for (int round = 0; round < 4; ++round) {
    for (const auto& [address, text] : {std::pair(second, "two"), std::pair(third, "three")}) {
      ASSERT_EQ(Open(address), Succeeded());
      EXPECT_EQ(Call("gettext", {{"target", "id=p"}}), Answered(text)) << round;
    }
  }
}

TEST_F(PageLoad, APageThatGoesOnLoadingIsWaitedForAndSelected) {
  const std::string endless =
      server->Page("/loading", "<!doctype html><title>Loading</title><p id=p>some</p><img src='" +
                                   server->EndlessPage() + "'>");
  const Browser browser(endless);
  ASSERT_NO_FATAL_FAILURE(SelectStarted("title=Loading"));
  const Timed wait = CallTimed("selectwindowuntop", {{"target", "title=Loading"}, {"tab-status", "loading"}});
  EXPECT_EQ(wait.envelope, Failed("The page load timeout."));
  EXPECT_GE(wait.seconds, 4.5);
  EXPECT_EQ(Call("gettext", {{"target", "id=p"}}), Answered("some")) << "selected all the same";
  // A page that stops responding while it loads has not loaded for that.
  ASSERT_TRUE(Call("executescript", {{"value", Compute(3000, 12'000)}}).success);
  EXPECT_EQ(Select("title=Loading"), Failed("The page load timeout."));
}

// A script in the page keeps it from responding before it has come whole.
TEST_F(PageLoad, APageThatComputesAsItLoadsIsWaitedFor) {
  const std::string computing =
      server->Page("/computing",
                   "<!doctype html><title>Computing</title><script>for (var end = Date.now() + 3500; "
                   "Date.now() < end;);</script><p id=p>whole</p>");
  const Browser browser(first);
  ASSERT_NO_FATAL_FAILURE(SelectStarted("title=First"));
  const Timed wait = CallTimed("open", {{"target", computing}, {"resize-max", "False"}});
  EXPECT_EQ(wait.envelope, Succeeded());
  EXPECT_GE(wait.seconds, 3);
  EXPECT_EQ(Call("gettext", {{"target", "id=p"}}), Answered("whole"));
}

// A tab that cannot answer while the tabs are compared is no new one when it can again.
TEST_F(PageLoad, ANewTabIsNeverAnOldOneThatWasBusy) {
  const Browser browser(first);
  ASSERT_NO_FATAL_FAILURE(SelectStarted("title=First"));
  ASSERT_EQ(Open(second, "_blank"), Succeeded());
  browser.SetSwitch(L"tab-order=active-last");
  // Busy when the next tab is asked for, and no longer when it is looked for.
  ASSERT_TRUE(Call("executescript", {{"value", Compute(1500, 1700)}}).success);
  HWND busy = browser.Page();
  ASSERT_EQ(Select("title=First"), Succeeded());
  for (int round = 0; round < 200; ++round) {
    if (SendMessageTimeoutW(busy, WM_NULL, 0, 0, SMTO_NORMAL, 20, nullptr) == 0) break;
    Sleep(10);
  }
  ASSERT_EQ(Open(third, "_blank"), Succeeded());
  EXPECT_EQ(Call("currenturl"), Answered(third));
}

TEST_F(PageLoad, ABrowserStartedForAnAddressItRefusesIsClosed) {
  {
    const Browser browser(first);
    ASSERT_NO_FATAL_FAILURE(SelectStarted("title=First"));
    ASSERT_EQ(Call("quit"), Succeeded());
  }
  EXPECT_EQ(Call("open", {{"target", ""}}), Failed("Open new tab failed!"));
  for (int round = 0; round < 100 && FindWindowW(L"IEFrame", nullptr) != nullptr; ++round) Sleep(50);
  EXPECT_EQ(FindWindowW(L"IEFrame", nullptr), nullptr);
  EndStartedBrowsers();
}

}  // namespace
}  // namespace quillmate::test
