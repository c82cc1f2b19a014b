// Bounds the time that calls to another process may take.
#pragma once

#include <windows.h>
#include <objidl.h>
#include <chrono>

#include "com/com_ptr.h"

namespace quillmate::com {

/// While it lives, a call out of this thread that is not answered within the limit is cancelled and fails,
/// and so does every call after it: a browser that hangs costs the limit once, not once a call. Works on a
/// thread in a single-threaded apartment; on any other thread it does nothing. The thread's own message
/// filter still hears of incoming calls and is put back at the end.
class CallLimit {
 public:
  explicit CallLimit(std::chrono::milliseconds limit);
  CallLimit(const CallLimit&) = delete;
  CallLimit& operator=(const CallLimit&) = delete;
  ~CallLimit();

 private:
  class Filter;

  ComPtr<Filter> filter_;
  ComPtr<IMessageFilter> previous_;
  UINT_PTR timer_ = 0;
};

}  // namespace quillmate::com
