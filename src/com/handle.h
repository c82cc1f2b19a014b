#pragma once

#include <windows.h>
#include <memory>
#include <type_traits>

namespace quillmate::com {

struct HandleCloser {
  void operator()(HANDLE handle) const { CloseHandle(handle); }
};
/// A kernel handle (process, thread, event); null means none.
using UniqueHandle = std::unique_ptr<std::remove_pointer_t<HANDLE>, HandleCloser>;

}  // namespace quillmate::com
