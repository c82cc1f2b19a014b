// Two guards limit a call. A thread of the library's own looks at the calls of the thread that runs a command. In a
// single-threaded apartment a message filter does it, too: COM calls its MessagePending only when a message arrives,
// so a timer posts one every 100 ms.
#include "com/call_limit.h"

#include <objbase.h>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <tuple>
#include <utility>

#include "com/call_watch.h"
#include "com/owned.h"
#include "com/process.h"

namespace quillmate::com {
namespace {

constexpr std::chrono::milliseconds kLookEvery(100);

/// What the looking thread works on. Commands take turns, so one thread is watched at a time.
struct Watched {
  std::mutex mutex;
  std::condition_variable changed;
  DWORD thread = 0;
  std::chrono::milliseconds limit{0};
  /// Counts the changes of the two above.
  unsigned turn = 0;
};

// Never destroyed: the looking thread outlives everything.
Watched& TheWatched() {
  static Watched& watched = *new Watched;
  return watched;
}

/// Deliberate: Wine ends the process at the call that would cancel another, so there it is not made.
bool CanCancel() {
  static const bool can = GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") == nullptr;
  return can;
}

/// Looks at the calls of one thread until another one, or none, is to be watched.
void Watch(std::unique_lock<std::mutex>& lock, Watched& watched) {
  const unsigned turn = watched.turn;
  CallWatch watch(watched.limit);
  // Held from one look to the next: its address then belongs to one call only.
  ComPtr<ICancelMethodCalls> call;
  while (watched.turn == turn) {
    ComPtr<ICancelMethodCalls> in_flight;
    CoGetCancelObject(watched.thread, __uuidof(ICancelMethodCalls),
                      reinterpret_cast<void**>(in_flight.GetAddressOf()));
    call = std::move(in_flight);
    if (watch.IsOverdue(call.Get(), CallWatch::Time::clock::now())) call->Cancel(0);
    watched.changed.wait_for(lock, kLookEvery);
  }
}

void Look() {
  Watched& watched = TheWatched();
  CoInitializeEx(nullptr, COINIT_MULTITHREADED);
  std::unique_lock lock(watched.mutex);
  for (;;) {
    watched.changed.wait(lock, [&] { return watched.thread != 0; });
    Watch(lock, watched);
  }
}

void StartLooking() {
  static const bool started = [] {
    KeepLibraryLoaded();
    std::thread(Look).detach();
    return true;
  }();
  static_cast<void>(started);
}

/// @return what was watched before.
std::pair<DWORD, std::chrono::milliseconds> SetWatched(DWORD thread, std::chrono::milliseconds limit) {
  Watched& watched = TheWatched();
  const std::lock_guard lock(watched.mutex);
  ++watched.turn;
  watched.changed.notify_all();
  return {std::exchange(watched.thread, thread), std::exchange(watched.limit, limit)};
}

constexpr UINT kCheckEveryMs = 100;
constexpr DWORD kRetryAfterMs = 100;
constexpr DWORD kGiveUp = static_cast<DWORD>(-1);

}  // namespace

CallCanceller::CallCanceller(std::chrono::milliseconds limit)
    : enabled_(CanCancel() && SUCCEEDED(CoEnableCallCancellation(nullptr))) {
  if (!enabled_) return;
  StartLooking();
  std::tie(previous_thread_, previous_limit_) = SetWatched(GetCurrentThreadId(), limit);
}

CallCanceller::~CallCanceller() {
  if (!enabled_) return;
  SetWatched(previous_thread_, previous_limit_);
  CoDisableCallCancellation(nullptr);
}

class CallLimit::Filter final : public IMessageFilter {
 public:
  Filter(DWORD limit_ms, bool cancels) : limit_ms_(limit_ms), cancels_(cancels) {}

  /// The filter that was there before, which goes on deciding about incoming calls.
  void Follow(ComPtr<IMessageFilter> previous) { previous_ = std::move(previous); }

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    if (object == nullptr) return E_POINTER;
    const bool known = IsEqualIID(iid, __uuidof(IUnknown)) || IsEqualIID(iid, __uuidof(IMessageFilter));
    *object = known ? static_cast<IMessageFilter*>(this) : nullptr;
    if (known) AddRef();
    return known ? S_OK : E_NOINTERFACE;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return static_cast<ULONG>(InterlockedIncrement(&references_)); }
  STDMETHODIMP_(ULONG) Release() override {
    const LONG left = InterlockedDecrement(&references_);
    if (left == 0) delete this;
    return static_cast<ULONG>(left);
  }

  STDMETHODIMP_(DWORD)
  HandleInComingCall(DWORD type, HTASK caller, DWORD elapsed_ms, LPINTERFACEINFO info) override {
    return previous_ != nullptr ? previous_->HandleInComingCall(type, caller, elapsed_ms, info)
                                : static_cast<DWORD>(SERVERCALL_ISHANDLED);
  }

  // A browser that is busy for the moment asks to be called again.
  STDMETHODIMP_(DWORD) RetryRejectedCall(HTASK, DWORD elapsed_ms, DWORD reason) override {
    if (reason != SERVERCALL_RETRYLATER || IsOver(elapsed_ms)) return kGiveUp;
    return kRetryAfterMs;
  }

  STDMETHODIMP_(DWORD) MessagePending(HTASK, DWORD elapsed_ms, DWORD) override {
    return static_cast<DWORD>(cancels_ && IsOver(elapsed_ms) ? PENDINGMSG_CANCELCALL
                                                             : PENDINGMSG_WAITDEFPROCESS);
  }

 private:
  virtual ~Filter() = default;

  bool IsOver(DWORD elapsed_ms) const { return elapsed_ms >= limit_ms_; }

  LONG references_ = 0;
  const DWORD limit_ms_;
  const bool cancels_;
  ComPtr<IMessageFilter> previous_;
};

CallLimit::CallLimit(std::chrono::milliseconds limit, AfterLimit after)
    : filter_(new Filter(static_cast<DWORD>(limit.count()), after == AfterLimit::kCancel)) {
  if (after == AfterLimit::kCancel) canceller_.emplace(limit);
  if (FAILED(CoRegisterMessageFilter(filter_.Get(), &previous_))) {
    filter_.Reset();
    return;
  }
  filter_->Follow(previous_);
  if (after == AfterLimit::kCancel) timer_ = SetTimer(nullptr, 0, kCheckEveryMs, nullptr);
}

CallLimit::~CallLimit() {
  if (filter_ == nullptr) return;
  if (timer_ != 0) KillTimer(nullptr, timer_);
  ComPtr<IMessageFilter> own;
  CoRegisterMessageFilter(previous_.Get(), &own);
}

}  // namespace quillmate::com
