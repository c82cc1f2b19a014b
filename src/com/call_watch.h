// Decides when a call has lasted too long.
#pragma once

#include <chrono>
#include <utility>

namespace quillmate::com {

/// Follows the calls of one thread, which are looked at from time to time. The limit counts for each call
/// anew: a command of many short calls may take as long as it needs.
class CallWatch {
 public:
  using Time = std::chrono::steady_clock::time_point;

  explicit CallWatch(std::chrono::milliseconds limit) : limit_(limit) {}

  /// @param call identifies the call in flight; null when there is none.
  /// @return whether to cancel it now: once when the limit is over, and again after each further limit, for
  /// the cancelling itself may fail.
  bool IsOverdue(const void* call, Time now) {
    if (std::exchange(call_, call) != call) since_ = now;
    if (call == nullptr || now - since_ < limit_) return false;
    since_ = now;
    return true;
  }

 private:
  std::chrono::milliseconds limit_;
  const void* call_ = nullptr;
  Time since_;
};

}  // namespace quillmate::com
