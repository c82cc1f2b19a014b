// The pin that FreeLibrary respects.
#include "com/library_lifetime.h"

#include <windows.h>

namespace quillmate::com {

void KeepLibraryLoaded() {
  HMODULE library = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                     reinterpret_cast<LPCWSTR>(&KeepLibraryLoaded), &library);
}

}  // namespace quillmate::com
