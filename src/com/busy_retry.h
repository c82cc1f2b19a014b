#pragma once

#include <windows.h>
#include <objidl.h>
#include <chrono>

#include "com/com_ptr.h"

namespace quillmate::com {

/// While it lives, a call of this thread that the browser refuses as busy (RPC_E_SERVERCALL_RETRYLATER) is
/// made again until the limit is over. Works on a thread in a single-threaded apartment; on any other thread
/// it does nothing.
class BusyRetry {
 public:
  explicit BusyRetry(std::chrono::milliseconds limit);
  BusyRetry(const BusyRetry&) = delete;
  BusyRetry& operator=(const BusyRetry&) = delete;
  ~BusyRetry();

 private:
  bool registered_;
  ComPtr<IMessageFilter> previous_;
};

}  // namespace quillmate::com
