// One command at a time.
#pragma once

#include <windows.h>

namespace quillmate::com {

/// Holds the process's command lock. The owning thread may take it again. A thread that waits for it goes on
/// serving what other threads and processes send to its windows, and in a single-threaded apartment the calls
/// to its objects: the running command may need an answer from them.
class CommandLock {
 public:
  CommandLock();
  CommandLock(const CommandLock&) = delete;
  CommandLock& operator=(const CommandLock&) = delete;
  ~CommandLock();
};

}  // namespace quillmate::com
