// Windows, tabs and browsers through the commands that choose, open, navigate and close them.
#include <gtest/gtest.h>
#include <memory>

#include "support/browser.h"
#include "support/library.h"
#include "support/page_server.h"

namespace quillmate::test {
namespace {

class BrowserSession : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    server = std::make_unique<PageServer>();
    first = server->Page("/first.html", "<!doctype html><title>First</title><p id=p>one</p>");
    second = server->Page("/second.html", "<!doctype html><title>Second page</title><p id=p>two</p>");
  }
  static void TearDownTestSuite() { server.reset(); }

  static inline std::unique_ptr<PageServer> server;
  static inline std::string first;
  static inline std::string second;
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
       {std::string("index=40"), std::string("title=Firs"), std::string("title=first"), "url=" + first + "#x",
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

TEST_F(BrowserSession, ANewTabBecomesCurrent) {
  const Browser browser(first);
  ASSERT_EQ(Select("title=First"), Succeeded());
  EXPECT_EQ(Call("open", {{"target", second}, {"by", "_blank"}, {"resize-max", "False"}}), Succeeded());
  EXPECT_EQ(Call("currenturl"), Answered(second));
  EXPECT_EQ(Call("gettext", {{"target", "id=p"}}), Answered("two"));
  EXPECT_EQ(Call("close"), Succeeded());
  EXPECT_EQ(Select("title=First"), Succeeded());
}

}  // namespace
}  // namespace quillmate::test
