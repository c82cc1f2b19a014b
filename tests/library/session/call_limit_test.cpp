// Calls that last too long are cancelled, in every apartment. Where the tests run no call can be cancelled, so
// the system's part is played here: it says which call a thread waits for, and is told to cancel it.
#include <windows.h>
#include <exdisp.h>
#include <objidl.h>
#include <atomic>
#include <chrono>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <mutex>
#include <string_view>
#include <thread>
#include <vector>

#include "com/owned.h"
#include "support/browser.h"
#include "support/import_hook.h"
#include "support/library.h"
#include "support/page_server.h"

namespace quillmate::test {
namespace {

using Clock = std::chrono::steady_clock;

/// A call to another process that lasts for a time, or until it is cancelled.
class PlayedCall final : public ICancelMethodCalls {
 public:
  /// Makes the call on the calling thread, which waits for it as it would in COM.
  /// @return whether it came back by itself.
  static bool Make(DWORD lasts_ms) {
    PlayedCall call(lasts_ms);
    return call.Wait();
  }
  static HRESULT InFlight(DWORD thread, REFIID iid, void** object) {
    const std::lock_guard lock(mutex_);
    if (current_ == nullptr || current_->thread_ != thread) return RPC_E_CALL_COMPLETE;
    return current_->QueryInterface(iid, object);
  }
  /// How long each cancelled call had lasted, in seconds.
  static std::vector<double> TakeCancelled() {
    const std::lock_guard lock(mutex_);
    return std::exchange(cancelled_, {});
  }

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    const bool known = IsEqualIID(iid, __uuidof(IUnknown)) || IsEqualIID(iid, __uuidof(ICancelMethodCalls));
    *object = known ? this : nullptr;
    if (known) AddRef();
    return known ? S_OK : E_NOINTERFACE;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return static_cast<ULONG>(++references_); }
  STDMETHODIMP_(ULONG) Release() override { return static_cast<ULONG>(--references_); }
  STDMETHODIMP Cancel(ULONG) override {
    const std::lock_guard lock(mutex_);
    cancelled_.push_back(std::chrono::duration<double>(Clock::now() - begin_).count());
    SetEvent(end_.get());
    return S_OK;
  }
  STDMETHODIMP TestCancel() override { return S_OK; }

 private:
  explicit PlayedCall(DWORD lasts_ms) : lasts_ms_(lasts_ms) {
    const std::lock_guard lock(mutex_);
    current_ = this;
  }
  virtual ~PlayedCall() = default;
  bool Wait() {
    const bool is_cancelled = WaitForSingleObject(end_.get(), lasts_ms_) == WAIT_OBJECT_0;
    {
      const std::lock_guard lock(mutex_);
      current_ = nullptr;
    }
    while (references_ > 0) Sleep(1);
    return !is_cancelled;
  }

  static inline std::mutex mutex_;
  static inline PlayedCall* current_ = nullptr;
  static inline std::vector<double> cancelled_;

  const DWORD lasts_ms_;
  const DWORD thread_ = GetCurrentThreadId();
  const Clock::time_point begin_ = Clock::now();
  const com::UniqueHandle end_{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
  std::atomic<int> references_ = 0;
};

constexpr DWORD kForEver = 20'000;

/// The shell's list of browsers, whose items take their time and are none.
class PlayedList final : public IShellWindows {
 public:
  static inline std::vector<DWORD> items;
  static inline size_t asked = 0;

  STDMETHODIMP get_Count(long* count) override {
    *count = static_cast<long>(items.size());
    return S_OK;
  }
  STDMETHODIMP Item(VARIANT, IDispatch**) override {
    return PlayedCall::Make(items[asked++]) ? S_FALSE : RPC_E_CALL_CANCELED;
  }

  STDMETHODIMP QueryInterface(REFIID, void** object) override {
    *object = this;
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return 2; }
  STDMETHODIMP_(ULONG) Release() override { return 1; }
  STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
    return E_NOTIMPL;
  }
  STDMETHODIMP _NewEnum(IUnknown**) override { return E_NOTIMPL; }
  STDMETHODIMP Register(IDispatch*, long, int, long*) override { return E_NOTIMPL; }
  STDMETHODIMP RegisterPending(long, VARIANT*, VARIANT*, int, long*) override { return E_NOTIMPL; }
  STDMETHODIMP Revoke(long) override { return E_NOTIMPL; }
  STDMETHODIMP OnNavigate(long, VARIANT*) override { return E_NOTIMPL; }
  STDMETHODIMP OnActivated(long, VARIANT_BOOL) override { return E_NOTIMPL; }
  STDMETHODIMP FindWindowSW(VARIANT*, VARIANT*, int, long*, int, IDispatch**) override { return E_NOTIMPL; }
  STDMETHODIMP OnCreated(long, IUnknown*) override { return E_NOTIMPL; }
  STDMETHODIMP ProcessAttachDetach(VARIANT_BOOL) override { return E_NOTIMPL; }

 private:
  virtual ~PlayedList() = default;
};

std::atomic<int> enabled = 0;

HRESULT WINAPI Enable(void*) { return ++enabled, S_OK; }
HRESULT WINAPI Disable(void*) { return --enabled, S_OK; }

HRESULT WINAPI Create(REFCLSID class_id, IUnknown* outer, DWORD context, REFIID iid, void** object) {
  static PlayedList& list = *new PlayedList;
  if (IsEqualCLSID(class_id, CLSID_InternetExplorer)) {
    PlayedCall::Make(kForEver);
    return RPC_E_CALL_CANCELED;
  }
  if (IsEqualCLSID(class_id, CLSID_ShellWindows)) return list.QueryInterface(iid, object);
  return CoCreateInstance(class_id, outer, context, iid, object);
}

BOOL WINAPI StartNothing(const wchar_t*, wchar_t*, SECURITY_ATTRIBUTES*, SECURITY_ATTRIBUTES*, BOOL, DWORD,
                         void*, const wchar_t*, STARTUPINFOW*, PROCESS_INFORMATION*) {
  return FALSE;
}

/// The library asks by this whether the system can cancel calls.
FARPROC WINAPI FindFunction(HMODULE module, const char* name) {
  return std::string_view(name) == "wine_get_version" ? nullptr : GetProcAddress(module, name);
}

/// The filters that threads of the library's register, the last one of each thread.
std::mutex filters_lock;
std::map<DWORD, com::ComPtr<IMessageFilter>> filters;

HRESULT WINAPI NoteFilter(IMessageFilter* filter, IMessageFilter** previous) {
  if (filter != nullptr) {
    const std::lock_guard lock(filters_lock);
    filters[GetCurrentThreadId()] = com::ComPtr<IMessageFilter>(filter);
  }
  return CoRegisterMessageFilter(filter, previous);
}

constexpr DWORD kApartments[] = {COINIT_APARTMENTTHREADED, COINIT_MULTITHREADED};

class CallLimits : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    // Not by a command: the first one asks whether calls can be cancelled.
    ASSERT_NE(LoadLibraryW(L"quillmate.dll"), nullptr);
    hooks = std::make_unique<Hooks>();
    for (const ImportHook* hook : {&hooks->find, &hooks->enable, &hooks->disable, &hooks->in_flight,
                                   &hooks->create, &hooks->start, &hooks->filter}) {
      ASSERT_TRUE(hook->IsInForce());
    }
  }
  static void TearDownTestSuite() { hooks.reset(); }
  void SetUp() override { PlayedCall::TakeCancelled(); }

  /// Calls a command on a thread of its own in an apartment of a kind.
  static Envelope CallIn(DWORD apartment, const char* command, Parameters parameters = {}) {
    Envelope answer;
    std::thread([&] {
      CoInitializeEx(nullptr, apartment);
      answer = Call(command, parameters);
      CoUninitialize();
    }).join();
    return answer;
  }

 private:
  struct Hooks {
    ImportHook find{"GetProcAddress", FindFunction};
    ImportHook enable{"CoEnableCallCancellation", Enable};
    ImportHook disable{"CoDisableCallCancellation", Disable};
    ImportHook in_flight{"CoGetCancelObject", PlayedCall::InFlight};
    ImportHook create{"CoCreateInstance", Create};
    ImportHook start{"CreateProcessW", StartNothing};
    ImportHook filter{"CoRegisterMessageFilter", NoteFilter};
  };
  static inline std::unique_ptr<Hooks> hooks;
};

TEST_F(CallLimits, ACallThatDoesNotReturnIsCancelledAfterFiveSeconds) {
  for (const DWORD apartment : kApartments) {
    SCOPED_TRACE(apartment == COINIT_MULTITHREADED ? "MTA" : "STA");
    EXPECT_EQ(CallIn(apartment, "new_browser"), Failed("Open new browser failed!"));
    const auto cancelled = PlayedCall::TakeCancelled();
    ASSERT_EQ(cancelled.size(), 1u);
    EXPECT_GE(cancelled[0], 4.8);
    EXPECT_LE(cancelled[0], 8);
    EXPECT_EQ(enabled, 0) << "the host's thread is as it was";
  }
}

// Browsers in the shell's list have a second each. One that has had it costs itself only.
TEST_F(CallLimits, EachCallHasItsOwnLimit) {
  for (const DWORD apartment : kApartments) {
    SCOPED_TRACE(apartment == COINIT_MULTITHREADED ? "MTA" : "STA");
    PlayedList::items = {600, 600, kForEver, 600, 600, kForEver, 600};
    PlayedList::asked = 0;
    EXPECT_EQ(CallIn(apartment, "selectwindowuntop", {{"target", "title=none"}}),
              Failed("Browser not found!"));
    EXPECT_EQ(PlayedList::asked, PlayedList::items.size());
    const auto cancelled = PlayedCall::TakeCancelled();
    ASSERT_EQ(cancelled.size(), 2u);
    for (const double seconds : cancelled) {
      EXPECT_GE(seconds, 0.9);
      EXPECT_LE(seconds, 3);
    }
  }
}

// A browser that is busy for the moment asks to be called again, whichever thread calls it.
TEST_F(CallLimits, ABusyBrowserIsCalledAgain) {
  PageServer server;
  const std::string page = server.Page("/page", "<!doctype html><title>Busy</title><button id=b>b</button>");
  const Browser browser(page);
  PlayedList::items.clear();
  Envelope selected;
  for (int round = 0; round < 50 && !selected.success; ++round) {
    selected = Call("selectwindowuntop", {{"target", "title=Busy"}, {"tab-status", "loading"}});
  }
  ASSERT_EQ(selected, Succeeded());
  {
    const std::lock_guard lock(filters_lock);
    filters.clear();
  }
  ASSERT_EQ(Call("click", {{"target", "id=b"}}), Answered(""));
  const std::lock_guard lock(filters_lock);
  ASSERT_EQ(filters.size(), 2u) << "the command's thread and its worker";
  for (const auto& [thread, filter] : filters) {
    const bool is_worker = thread != GetCurrentThreadId();
    SCOPED_TRACE(is_worker ? "worker" : "command");
    constexpr DWORD kGiveUp = static_cast<DWORD>(-1);
    const auto retry = [&](DWORD ms, DWORD reason) { return filter->RetryRejectedCall(nullptr, ms, reason); };
    EXPECT_LE(retry(0, SERVERCALL_RETRYLATER), 1000u);
    EXPECT_LE(retry(4900, SERVERCALL_RETRYLATER), 1000u);
    EXPECT_EQ(retry(5000, SERVERCALL_RETRYLATER), kGiveUp);
    EXPECT_EQ(retry(0, SERVERCALL_REJECTED), kGiveUp);
    const auto pending = [&](DWORD ms) { return filter->MessagePending(nullptr, ms, PENDINGTYPE_TOPLEVEL); };
    EXPECT_EQ(pending(4900), DWORD{PENDINGMSG_WAITDEFPROCESS});
    // A worker's call may take as long as the page's handlers do.
    EXPECT_EQ(pending(60'000), is_worker ? DWORD{PENDINGMSG_WAITDEFPROCESS} : DWORD{PENDINGMSG_CANCELCALL});
  }
}

}  // namespace
}  // namespace quillmate::test
