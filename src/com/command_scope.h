// What a command's thread needs of COM while the command runs.
#pragma once

#include <windows.h>
#include <objbase.h>
#include <chrono>

#include "com/call_limit.h"

namespace quillmate::com {

/// Puts the host's thread into a single-threaded apartment, for good: the selected surface and remembered
/// elements belong to it. A thread of a multi-threaded apartment stays there. Calls are limited for the
/// scope's length.
class CommandScope {
 public:
  explicit CommandScope(std::chrono::milliseconds call_limit) : entered_(Enter()), limit_(call_limit) {}

 private:
  static bool Enter() {
    // Once a thread, never balanced, on purpose.
    static thread_local const bool entered = SUCCEEDED(CoInitialize(nullptr));
    return entered;
  }

  bool entered_;
  CallLimit limit_;
};

}  // namespace quillmate::com
