// Commands from any thread of the host, whatever apartment it is in and whether it lives on or not.
#include <windows.h>
#include <objbase.h>
#include <atomic>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <iterator>
#include <memory>
#include <thread>
#include <vector>

#include "com/call_limit.h"
#include "com/owned.h"
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
                        "<button id=b onclick=\"out.innerText = 'clicked'\">b</button><button id=ask "
                        "onclick='alert(1)'>ask</button>"
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

TEST_F(Threads, AThreadForEachOfManyCommands) {
  const Browser browser(page);
  ASSERT_EQ(CallOnThread(Com::kNone, "selectwindowuntop", kSelect), Succeeded());
  for (int n = 0; n < 300; ++n) {
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
  const struct {
    const char* command;
    const char* message;
  } rows[] = {{"gettext", "Get text failed!"},
              {"quit", "Quit failed!"},
              {"movebyoffset", "Move by offset failed!"},
              {"movetoelement", "Move to element failed!"},
              {"movetoelementwithoffset", "Move to element with offset failed!"}};
  std::vector<Envelope> inner;
  std::atomic<HWND> window = nullptr;
  std::jthread interface_thread([&] {
    OnThread(Com::kSingleThreaded, [&] {
      ASSERT_EQ(Call("selectwindowuntop", kSelect), Succeeded());
      const HostWindow host([&] {
        for (const auto& row : rows) inner.push_back(Call(row.command, kOut));
      });
      window = host.get();
      EXPECT_EQ(Call("waitdisappear", kOut), (Envelope{false, "false", "Wait element disappear failed!"}));
      EXPECT_EQ(Call("gettext", kOut), Answered("text"));
    });
  });
  while (window == nullptr) Sleep(10);
  EXPECT_TRUE(Told(window, 5000));
  interface_thread.join();
  ASSERT_EQ(inner.size(), std::size(rows));
  for (size_t i = 0; i < inner.size(); ++i) EXPECT_EQ(inner[i], Failed(rows[i].message)) << rows[i].command;
}

// A copy, because the tests' own stays loaded anyway; from a multi-threaded apartment, where selecting keeps nothing.
TEST_F(Threads, ALibraryWithAClickUnderWayStaysLoaded) {
  const Browser browser(page);
  const auto copy = std::filesystem::temp_directory_path() / L"quillmate_copy.dll";
  wchar_t original[MAX_PATH] = L"";
  GetModuleFileNameW(LoadLibraryW(L"quillmate.dll"), original, MAX_PATH);
  ASSERT_NE(CopyFileW(original, copy.c_str(), FALSE), FALSE);
  OnThread(Com::kMultiThreaded, [&] {
    const HMODULE library = LoadLibraryW(copy.c_str());
    const auto call = [library](const char* command, const char* parameters) {
      using Command = const char* (*)(const char*);
      return std::string(
          reinterpret_cast<Command>(reinterpret_cast<void*>(GetProcAddress(library, command)))(parameters));
    };
    EXPECT_TRUE(call("selectwindowuntop", R"({"target": "title=Threads"})").contains("true"));
    EXPECT_TRUE(call("click", R"({"target": "id=ask"})").contains("true"));
    FreeLibrary(library);
  });
  EXPECT_NE(GetModuleHandleW(L"quillmate_copy.dll"), nullptr);
  Envelope answered;
  for (int round = 0; round < 100 && !answered.success; ++round) {
    answered = Call("assertalert");
    Sleep(50);
  }
  EXPECT_EQ(answered, Succeeded());
}

// Under Wine no call is told to come again later, and none can be cancelled, so the filter itself is asked.
TEST(CallLimit, RetriesBusyBrowsersAndGivesUpWhenItsTimeIsOver) {
  OnThread(Com::kSingleThreaded, [] {
    const com::CallLimit limit(std::chrono::milliseconds(5000));
    com::ComPtr<IMessageFilter> filter;
    ASSERT_EQ(CoRegisterMessageFilter(nullptr, &filter), S_OK);
    ASSERT_NE(filter, nullptr);
    constexpr auto kGiveUp = static_cast<DWORD>(-1);
    const DWORD again = filter->RetryRejectedCall(nullptr, 4900, SERVERCALL_RETRYLATER);
    EXPECT_TRUE(again >= 100 && again < 1000) << "100 and more is a pause";
    EXPECT_EQ(filter->RetryRejectedCall(nullptr, 5000, SERVERCALL_RETRYLATER), kGiveUp);
    EXPECT_EQ(filter->RetryRejectedCall(nullptr, 0, SERVERCALL_REJECTED), kGiveUp);
    EXPECT_EQ(filter->MessagePending(nullptr, 4900, PENDINGTYPE_TOPLEVEL), DWORD{PENDINGMSG_WAITDEFPROCESS});
    EXPECT_EQ(filter->MessagePending(nullptr, 5000, PENDINGTYPE_TOPLEVEL), DWORD{PENDINGMSG_CANCELCALL});
    CoRegisterMessageFilter(filter.Get(), nullptr);
  });
}

}  // namespace
}  // namespace quillmate::test
