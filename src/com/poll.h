#pragma once

#include <chrono>

namespace quillmate::com {

/// Suspends the calling thread. The one place where the library sleeps.
void Pause(std::chrono::milliseconds time);

/// Asks a condition up to `rounds` times, with a pause after each time that it does not hold.
/// @return whether it held.
template <class Condition>
bool PollUntil(int rounds, std::chrono::milliseconds interval, Condition condition) {
  for (int round = 0; round < rounds; ++round) {
    if (condition()) return true;
    Pause(interval);
  }
  return false;
}

}  // namespace quillmate::com
