// Closing tabs and windows whose pages do not let go: pages that hang, and pages that hang when they are left.
#include <windows.h>
#include <objbase.h>
#include <gtest/gtest.h>
#include <memory>
#include <thread>

#include "support/browser.h"
#include "support/library.h"
#include "support/page_server.h"

namespace quillmate::test {
namespace {

class Closing : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    server = std::make_unique<PageServer>();
    page = server->Page("/page", "<!doctype html><title>Page</title><p id=p>text</p>");
    other = server->Page("/other", "<!doctype html><title>Other</title>");
    clinging =
        server->Page("/clinging",
                     "<!doctype html><title>Clinging</title><script>window.onbeforeunload = function () {"
                     " for (var end = Date.now() + 30000; Date.now() < end;); }</script>");
  }
  static void TearDownTestSuite() { server.reset(); }

  /// Starts a browser and selects its page. The frame answers while a tab hangs, as that of another process does.
  static std::unique_ptr<Browser> Start(Shell shell = Shell::kClassic) {
    auto browser = std::make_unique<Browser>(other, shell);
    browser->SetSwitch(L"hung-frame=answers");
    // The list knows no kinds of frames: a hosted tab found there is taken for one of Internet Explorer's.
    browser->SetSwitch(L"shell-list=no");
    Envelope selected;
    for (int round = 0; round < 50 && !selected.success; ++round) {
      selected = Call("selectwindowuntop", {{"target", "title=Other"}});
    }
    EXPECT_EQ(selected, Succeeded());
    return browser;
  }
  static void HangSelectedPage() {
    ASSERT_TRUE(Call("executescript", {{"value", "setTimeout(function () { for (;;); }, 0)"}}).success);
    Sleep(500);
  }
  static bool IsClosed(const Browser& browser) {
    for (int round = 0; round < 200 && browser.Frame() != nullptr; ++round) Sleep(50);
    return browser.Frame() == nullptr;
  }

  static inline std::unique_ptr<PageServer> server;
  static inline std::string page;
  static inline std::string other;
  static inline std::string clinging;
};

/// Calls a command, which must come back soon whatever its page does.
/// @param apartment of the thread that calls.
Envelope CallInTime(const char* command, Parameters parameters = {},
                    DWORD apartment = COINIT_APARTMENTTHREADED) {
  Timed answer;
  std::thread([&] {
    CoInitializeEx(nullptr, apartment);
    answer = CallTimed(command, parameters);
    CoUninitialize();
  }).join();
  EXPECT_LT(answer.seconds, 20) << command;
  return answer.envelope;
}

// Its neighbours would go with the window, so `close` leaves it; `quit` means all of them.
TEST_F(Closing, APageThatHangsAmongOthersIsClosedByQuitOnly) {
  for (const Shell shell : {Shell::kClassic, Shell::kHosted}) {
    SCOPED_TRACE(shell == Shell::kHosted ? "hosted" : "classic");
    const auto browser = Start(shell);
    ASSERT_EQ(Call("open", {{"target", page}, {"by", "_blank"}, {"resize-max", "False"}}), Succeeded());
    ASSERT_NO_FATAL_FAILURE(HangSelectedPage());
    EXPECT_EQ(CallInTime("close", {{"option", "others"}}), Failed("Close failed!"));
    EXPECT_EQ(CallInTime("close"), Failed("Close failed!"));
    EXPECT_NE(browser->Frame(), nullptr);
    EXPECT_EQ(CallInTime("quit"), Succeeded());
    EXPECT_TRUE(IsClosed(*browser));
  }
}

TEST_F(Closing, APageThatHangsWhenItIsLeftHoldsNoHostUp) {
  const struct {
    const char* command;
    Parameters parameters;
  } rows[] = {{"open", {{"target", other}, {"resize-max", "False"}}}, {"close", {}}};
  for (const DWORD apartment : {DWORD{COINIT_APARTMENTTHREADED}, DWORD{COINIT_MULTITHREADED}}) {
    for (const auto& row : rows) {
      SCOPED_TRACE(row.command + std::string(apartment == COINIT_MULTITHREADED ? " MTA" : " STA"));
      const auto browser = Start();
      ASSERT_EQ(Call("open", {{"target", clinging}, {"resize-max", "False"}}), Succeeded());
      CallInTime(row.command, row.parameters, apartment);
      // Whatever became of the page, its window can be closed.
      if (row.command != std::string("close")) {
        EXPECT_EQ(CallInTime("quit", {}, apartment), Succeeded());
      }
      EXPECT_TRUE(IsClosed(*browser));
    }
  }
}

}  // namespace
}  // namespace quillmate::test
