// What becomes of the call that comes in now, when a test wants it to fail in a way that COM itself cannot
// answer.
#pragma once

#include <utility>

namespace testbrowser::engine {

enum class CallFate {
  kAnswered,
  kDisconnected,  ///< RPC_E_DISCONNECTED
  kNull           ///< S_FALSE and nothing
};

inline CallFate& NextCallFate() {
  static CallFate fate = CallFate::kAnswered;
  return fate;
}
/// @return the fate, for the first who asks during a call.
inline CallFate TakeCallFate() { return std::exchange(NextCallFate(), CallFate::kAnswered); }

}  // namespace testbrowser::engine
