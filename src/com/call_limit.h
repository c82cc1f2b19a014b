// Bounds the time that calls to another process may take.
#pragma once

#include <windows.h>
#include <objidl.h>
#include <chrono>

#include "com/call_canceller.h"
#include "com/com_ptr.h"

namespace quillmate::com {

/// While it lives, a call out of this thread that is not answered within the limit is cancelled and fails.
/// Each call has the whole limit. In a single-threaded apartment the thread's own message filter still hears
/// of incoming calls and is put back at the end.
class CallLimit {
 public:
  explicit CallLimit(std::chrono::milliseconds limit);
  CallLimit(const CallLimit&) = delete;
  CallLimit& operator=(const CallLimit&) = delete;
  ~CallLimit();

 private:
  class Filter;

  CallCanceller canceller_;
  ComPtr<Filter> filter_;
  ComPtr<IMessageFilter> previous_;
  UINT_PTR timer_ = 0;
};

}  // namespace quillmate::com
