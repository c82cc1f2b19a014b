#include "com/busy_retry.h"

namespace quillmate::com {
namespace {

class Filter final : public IMessageFilter {
 public:
  explicit Filter(DWORD limit_ms) : limit_ms_(limit_ms) {}

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

  STDMETHODIMP_(DWORD) HandleInComingCall(DWORD, HTASK, DWORD, LPINTERFACEINFO) override {
    return static_cast<DWORD>(SERVERCALL_ISHANDLED);
  }
  STDMETHODIMP_(DWORD) RetryRejectedCall(HTASK, DWORD elapsed_ms, DWORD reason) override {
    constexpr DWORD kRetryAfterMs = 100;
    constexpr DWORD kGiveUp = static_cast<DWORD>(-1);
    return reason == SERVERCALL_RETRYLATER && elapsed_ms < limit_ms_ ? kRetryAfterMs : kGiveUp;
  }
  STDMETHODIMP_(DWORD) MessagePending(HTASK, DWORD, DWORD) override {
    return static_cast<DWORD>(PENDINGMSG_WAITDEFPROCESS);
  }

 private:
  virtual ~Filter() = default;

  LONG references_ = 0;
  DWORD limit_ms_;
};

}  // namespace

BusyRetry::BusyRetry(std::chrono::milliseconds limit) {
  const ComPtr<IMessageFilter> filter(new Filter(static_cast<DWORD>(limit.count())));
  registered_ = SUCCEEDED(CoRegisterMessageFilter(filter.Get(), &previous_));
}

BusyRetry::~BusyRetry() {
  ComPtr<IMessageFilter> own;
  if (registered_) CoRegisterMessageFilter(previous_.Get(), &own);
}

}  // namespace quillmate::com
