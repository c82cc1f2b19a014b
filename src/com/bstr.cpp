// Allocation of owned BSTRs.
#include "com/bstr.h"

#include <new>

namespace quillmate::com {

Bstr::Bstr(std::wstring_view text) : text_(SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {
  if (text_ == nullptr) throw std::bad_alloc();
}

}  // namespace quillmate::com
