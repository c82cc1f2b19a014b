// Tells an object's own refusal from a call that never got an answer.
#pragma once

#include <windows.h>
#include <unknwn.h>

#include "com/com_ptr.h"

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

}  // namespace quillmate::com
