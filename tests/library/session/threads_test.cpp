// Commands from any thread of the host, whatever apartment it is in and whether it lives on or not.
#include <windows.h>
#include <objbase.h>
#include <atomic>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <thread>

#include "support/browser.h"
#include "support/library.h"
#include "support/page_server.h"

namespace quillmate::test {
namespace {

enum class Com { kNone, kSingleThreaded, kMultiThreaded };
constexpr Com kKinds[] = {Com::kNone, Com::kSingleThreaded, Com::kMultiThreaded};

const char* NameOf(Com kind) {
  if (kind == Com::kNone) return "no COM";
  return kind == Com::kSingleThreaded ? "STA" : "MTA";
}

/// Runs a function on a thread of its own, in an apartment that ends with the thread.
void OnThread(Com kind, const std::function<void()>& function) {
  std::thread([&] {
    if (kind != Com::kNone) {
      CoInitializeEx(nullptr, kind == Com::kSingleThreaded ? COINIT_APARTMENTTHREADED : COINIT_MULTITHREADED);
    }
    function();
    if (kind != Com::kNone) CoUninitialize();
  }).join();
}

Envelope CallOnThread(Com kind, const char* command, Parameters parameters = {}) {
  Envelope answer;
  OnThread(kind, [&] { answer = Call(command, parameters); });
  return answer;
}

class Threads : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    server = std::make_unique<PageServer>();
    server->Page("/frame", "<!doctype html><p id=inner>in the frame</p>");
    page = server->Page("/page",
                        "<!doctype html><title>Threads</title><p id=out>text</p>"
                        "<button id=b onclick=\"out.innerText = 'clicked'\">b</button>"
                        "<iframe id=f src=/frame></iframe>");
  }
  static void TearDownTestSuite() { server.reset(); }

  static inline std::unique_ptr<PageServer> server;
  static inline std::string page;
};

const Parameters kSelect = {{"target", "title=Threads"}, {"tab-status", "loading"}};
const Parameters kOut = {{"target", "id=out"}};

TEST_F(Threads, WhatOneThreadSelectedEveryOtherReads) {
  const Browser browser(page);
  for (const Com chooser : kKinds) {
    for (const Com reader : kKinds) {
      SCOPED_TRACE(std::string(NameOf(chooser)) + ", then " + NameOf(reader));
      ASSERT_EQ(CallOnThread(chooser, "selectwindowuntop", kSelect), Succeeded());
      OnThread(reader, [&] {
        for (int round = 0; round < 3; ++round) EXPECT_EQ(Call("gettext", kOut), Answered("text"));
        EXPECT_EQ(Call("currenturl"), Answered(page));
      });
    }
  }
  // The choosing thread still lives, and so does its pointer to the browser.
  OnThread(Com::kSingleThreaded, [] {
    EXPECT_EQ(Call("selectwindowuntop", kSelect), Succeeded());
    EXPECT_EQ(Call("gettext", kOut), Answered("text"));
    for (const Com reader : kKinds) EXPECT_EQ(CallOnThread(reader, "gettext", kOut), Answered("text"));
    EXPECT_EQ(Call("gettext", kOut), Answered("text"));
  });
}

TEST_F(Threads, FramesAndRememberedElementsBelongToTheProcess) {
  const Browser browser(page);
  ASSERT_EQ(CallOnThread(Com::kSingleThreaded, "selectwindowuntop", kSelect), Succeeded());
  ASSERT_EQ(CallOnThread(Com::kNone, "getelement", {{"target", "id=out"}, {"return", "id=kept"}}),
            Succeeded());
  ASSERT_EQ(CallOnThread(Com::kMultiThreaded, "selectframe", {{"target", "id=f"}}), Succeeded());
  for (const Com reader : kKinds) {
    SCOPED_TRACE(NameOf(reader));
    EXPECT_EQ(CallOnThread(reader, "gettext", {{"target", "id=inner"}}), Answered("in the frame"));
    EXPECT_EQ(CallOnThread(reader, "gettext", {{"target", "id=kept"}}), Answered("text"));
    EXPECT_EQ(CallOnThread(reader, "haselement", kOut), (Envelope{true, "false", {}}));
  }
  ASSERT_EQ(CallOnThread(Com::kNone, "selectframe", {{"target", "relative=top"}}), Succeeded());
  EXPECT_EQ(CallOnThread(Com::kNone, "click", {{"target", "id=b"}}), Answered(""));
  EXPECT_EQ(CallOnThread(Com::kNone, "gettext", {{"target", "id=kept"}}), Answered("clicked"));
}

TEST_F(Threads, AnyThreadOpensNavigatesAndEnds) {
  // Lets go of the browser of the test before, so that a new one is started.
  CallOnThread(Com::kNone, "quit");
  ASSERT_EQ(CallOnThread(Com::kNone, "open", {{"target", page}}), Succeeded());
  EXPECT_EQ(CallOnThread(Com::kMultiThreaded, "gettext", kOut), Answered("text"));
  // The current tab is used again, and no browser is started.
  ASSERT_EQ(CallOnThread(Com::kSingleThreaded, "open", {{"target", page + "?2"}}), Succeeded());
  EXPECT_EQ(CallOnThread(Com::kNone, "currenturl"), Answered(page + "?2"));
  EXPECT_EQ(CallOnThread(Com::kMultiThreaded, "back"), Succeeded());
  EXPECT_EQ(CallOnThread(Com::kMultiThreaded, "quit"), Succeeded());
  for (int round = 0; round < 100 && FindWindowW(L"IEFrame", nullptr) != nullptr; ++round) Sleep(50);
  EXPECT_EQ(FindWindowW(L"IEFrame", nullptr), nullptr);
  EndStartedBrowsers();
}

TEST_F(Threads, AThreadForEachOfAThousandCommands) {
  const Browser browser(page);
  ASSERT_EQ(CallOnThread(Com::kNone, "selectwindowuntop", kSelect), Succeeded());
  for (int n = 0; n < 1000; ++n) {
    ASSERT_EQ(CallOnThread(kKinds[n % 3], "currenturl"), Answered(page)) << n;
  }
}

// A host that leaves the apartment the commands ran in takes their pointers' ground away.
TEST_F(Threads, AThreadMayLeaveItsApartmentAndEnterAnother) {
  const Browser browser(page);
  OnThread(Com::kNone, [] {
    ASSERT_EQ(Call("selectwindowuntop", kSelect), Succeeded());
    for (const DWORD next : {COINIT_APARTMENTTHREADED, COINIT_MULTITHREADED, COINIT_APARTMENTTHREADED}) {
      EXPECT_EQ(Call("gettext", kOut), Answered("text"));
      EXPECT_EQ(Call("gettext", kOut), Answered("text"));
      CoUninitialize();
      EXPECT_EQ(CoInitializeEx(nullptr, next), S_OK);
    }
    CoUninitialize();
    EXPECT_EQ(Call("gettext", kOut), Answered("text"));
  });
}

/// A window whose thread serves messages as a host's user interface does, and runs a function when it is
/// told.
class HostWindow {
 public:
  explicit HostWindow(std::function<void()> on_message) : on_message_(std::move(on_message)) {
    window_ =
        CreateWindowExW(0, L"STATIC", L"host", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
    SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    SetWindowLongPtrW(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Procedure));
  }
  HostWindow(const HostWindow&) = delete;
  HostWindow& operator=(const HostWindow&) = delete;
  ~HostWindow() { DestroyWindow(window_); }
  HWND get() const { return window_; }

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message != WM_APP) return DefWindowProcW(window, message, wparam, lparam);
    reinterpret_cast<HostWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA))->on_message_();
    return 1;
  }

  std::function<void()> on_message_;
  HWND window_;
};

/// Whether the window's thread takes a message soon.
bool Told(HWND window, UINT limit_ms) {
  return SendMessageTimeoutW(window, WM_APP, 0, 0, SMTO_NORMAL, limit_ms, nullptr) != 0;
}

TEST_F(Threads, AWindowTakesMessagesWhileItsThreadWaitsForItsTurn) {
  const Browser browser(page);
  ASSERT_EQ(CallOnThread(Com::kNone, "selectwindowuntop", kSelect), Succeeded());
  for (const Com kind : kKinds) {
    SCOPED_TRACE(NameOf(kind));
    std::atomic<HWND> window = nullptr;
    std::jthread robot([] { Call("waitdisappear", kOut); });
    Sleep(500);
    std::jthread interface_thread([&] {
      OnThread(kind, [&] {
        const HostWindow host([] {});
        window = host.get();
        // Waits until the other thread's command has ended.
        EXPECT_EQ(Call("perform"), Succeeded());
      });
    });
    while (window == nullptr) Sleep(10);
    Sleep(300);
    int taken = 0;
    for (int n = 0; n < 10; ++n) taken += Told(window, 500) ? 1 : 0;
    EXPECT_EQ(taken, 10);
  }
}

// COM lets messages in while a command's call is under way; what they issue must not change what it works on.
TEST_F(Threads, ACommandFromAMessageDuringACommandFails) {
  const Browser browser(page);
  std::optional<Envelope> inner;
  std::atomic<HWND> window = nullptr;
  std::jthread interface_thread([&] {
    OnThread(Com::kSingleThreaded, [&] {
      ASSERT_EQ(Call("selectwindowuntop", kSelect), Succeeded());
      const HostWindow host([&] { inner = Call("gettext", kOut); });
      window = host.get();
      EXPECT_EQ(Call("waitdisappear", kOut), (Envelope{false, "false", "Wait element disappear failed!"}));
      EXPECT_EQ(Call("gettext", kOut), Answered("text"));
    });
  });
  while (window == nullptr) Sleep(10);
  EXPECT_TRUE(Told(window, 5000));
  interface_thread.join();
  EXPECT_EQ(inner, Failed("Get text failed!"));
}

}  // namespace
}  // namespace quillmate::test
