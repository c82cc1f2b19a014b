// Puts a function of the test in place of one that the library imports.
#pragma once

#include <windows.h>
#include <string_view>

namespace quillmate::test {

/// While it lives, the library's calls of an imported function go to the test. The library must be loaded.
class ImportHook {
 public:
  /// @param name of the imported function. @param replacement of the same type.
  template <class Function>
  ImportHook(std::string_view name, Function* replacement)
      : ImportHook(name, reinterpret_cast<ULONG_PTR>(replacement)) {}
  ImportHook(const ImportHook&) = delete;
  ImportHook& operator=(const ImportHook&) = delete;
  ~ImportHook();

  /// False when the library imports no such function: the test would try nothing.
  bool IsInForce() const { return import_ != nullptr; }

 private:
  ImportHook(std::string_view name, ULONG_PTR replacement);
  ULONG_PTR Put(ULONG_PTR function);

  IMAGE_THUNK_DATA* import_;
  ULONG_PTR original_ = 0;
};

}  // namespace quillmate::test
