// What becomes of calls to another process: how long they may take, and what their failure means.
#pragma once

#include <windows.h>
#include <objidl.h>
#include <unknwn.h>
#include <chrono>
#include <optional>

#include "com/owned.h"

namespace quillmate::com {

/// Whether a call failed on its way: rejected, cancelled, or its server gone. Nothing is known about the
/// object then. Any other failure is the object's own answer.
inline bool FailedInTransit(HRESULT result) {
  if (SUCCEEDED(result)) return false;
  const int code = HRESULT_CODE(result);
  const bool is_rpc_status =
      HRESULT_FACILITY(result) == FACILITY_WIN32 && code >= RPC_S_INVALID_STRING_BINDING && code < 1900;
  return HRESULT_FACILITY(result) == FACILITY_RPC || is_rpc_status || result == CO_E_OBJNOTCONNECTED;
}

/// Asks an object for an interface that every object of its kind has.
/// @return S_OK, or a failure in transit: proxies report a refused question as a missing interface.
template <class T, class U>
HRESULT QueryKnown(U* object, ComPtr<T>& result) {
  const HRESULT query = object->QueryInterface(__uuidof(T), reinterpret_cast<void**>(result.GetAddressOf()));
  return FAILED(query) && !FailedInTransit(query) ? RPC_E_CALL_REJECTED : query;
}

/// While it lives, each call of the calling thread to another process is cancelled once it lasts longer than
/// the limit, whatever apartment the thread is in. An inner one takes the outer one's place for its life.
/// Does nothing where the system cannot cancel calls.
class CallCanceller {
 public:
  explicit CallCanceller(std::chrono::milliseconds limit);
  CallCanceller(const CallCanceller&) = delete;
  CallCanceller& operator=(const CallCanceller&) = delete;
  ~CallCanceller();

 private:
  bool enabled_;
  DWORD previous_thread_ = 0;
  std::chrono::milliseconds previous_limit_{0};
};

/// What happens to a call that is not answered within the limit.
enum class AfterLimit { kCancel, kWait };

/// While it lives, a call out of this thread that is not answered within the limit is cancelled and fails. Each call
/// has the whole limit. A call that the browser refuses as busy (RPC_E_SERVERCALL_RETRYLATER) is made again until the
/// limit is over, on a thread in a single-threaded apartment. There the thread's own message filter still hears of
/// incoming calls and is put back at the end.
class CallLimit {
 public:
  /// @param after kWait makes refused calls again, and waits for any other as long as it takes.
  explicit CallLimit(std::chrono::milliseconds limit, AfterLimit after = AfterLimit::kCancel);
  CallLimit(const CallLimit&) = delete;
  CallLimit& operator=(const CallLimit&) = delete;
  ~CallLimit();

 private:
  class Filter;

  std::optional<CallCanceller> canceller_;
  ComPtr<Filter> filter_;
  ComPtr<IMessageFilter> previous_;
  UINT_PTR timer_ = 0;
};

}  // namespace quillmate::com
