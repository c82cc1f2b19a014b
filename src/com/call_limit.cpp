// The message filter that limits calls of a single-threaded apartment. COM calls MessagePending only when a
// message arrives, so a timer posts one every 100 ms.
#include "com/call_limit.h"

namespace quillmate::com {
namespace {

constexpr UINT kCheckEveryMs = 100;
constexpr DWORD kRetryAfterMs = 100;
constexpr DWORD kGiveUp = static_cast<DWORD>(-1);

}  // namespace

class CallLimit::Filter final : public IMessageFilter {
 public:
  explicit Filter(DWORD limit_ms) : limit_ms_(limit_ms) {}

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
    return static_cast<DWORD>(IsOver(elapsed_ms) ? PENDINGMSG_CANCELCALL : PENDINGMSG_WAITDEFPROCESS);
  }

 private:
  virtual ~Filter() = default;

  bool IsOver(DWORD elapsed_ms) const { return elapsed_ms >= limit_ms_; }

  LONG references_ = 0;
  const DWORD limit_ms_;
  ComPtr<IMessageFilter> previous_;
};

CallLimit::CallLimit(std::chrono::milliseconds limit)
    : canceller_(limit), filter_(new Filter(static_cast<DWORD>(limit.count()))) {
  if (FAILED(CoRegisterMessageFilter(filter_.Get(), &previous_))) {
    filter_.Reset();
    return;
  }
  filter_->Follow(previous_);
  timer_ = SetTimer(nullptr, 0, kCheckEveryMs, nullptr);
}

CallLimit::~CallLimit() {
  if (filter_ == nullptr) return;
  KillTimer(nullptr, timer_);
  ComPtr<IMessageFilter> own;
  CoRegisterMessageFilter(previous_.Get(), &own);
}

}  // namespace quillmate::com
