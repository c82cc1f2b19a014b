// What becomes of the call that comes in now, when a test wants it to fail in a way that COM itself cannot
// answer.
#pragma once

#include <windows.h>
#include <optional>
#include <utility>

namespace testbrowser::engine {

enum class CallFate {
  kAnswered,
  kRetryLater,    ///< RPC_E_SERVERCALL_RETRYLATER, as a caller sees it that gave up trying
  kDisconnected,  ///< RPC_E_DISCONNECTED
  kNull           ///< success without the object that was asked for; any other call is answered
};

inline CallFate& NextCallFate() {
  static CallFate fate = CallFate::kAnswered;
  return fate;
}
/// @return the fate, for the first who asks during a call.
inline CallFate TakeCallFate() { return std::exchange(NextCallFate(), CallFate::kAnswered); }
/// @return the failure of the call that comes in now; nothing when it does not fail.
inline std::optional<HRESULT> FailureOf(CallFate fate) {
  if (fate == CallFate::kRetryLater) return RPC_E_SERVERCALL_RETRYLATER;
  if (fate == CallFate::kDisconnected) return RPC_E_DISCONNECTED;
  return std::nullopt;
}
inline std::optional<HRESULT> TakeCallFailure() { return FailureOf(TakeCallFate()); }

}  // namespace testbrowser::engine
