// Cancels calls of a thread that last too long, from outside the thread.
#pragma once

#include <windows.h>
#include <chrono>

namespace quillmate::com {

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

}  // namespace quillmate::com
