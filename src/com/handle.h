// Owners for system handles that are given back by a call of their own.
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

struct ModuleFreer {
  void operator()(HMODULE module) const { FreeLibrary(module); }
};
using UniqueModule = std::unique_ptr<std::remove_pointer_t<HMODULE>, ModuleFreer>;

}  // namespace quillmate::com
