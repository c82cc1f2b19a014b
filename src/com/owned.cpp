#include "com/owned.h"

#include <utility>

namespace quillmate::com {

Variant Variant::Int(LONG value) {
  Variant result;
  result.value_.vt = VT_I4;
  result.value_.lVal = value;
  return result;
}

Variant Variant::Bool(bool value) {
  Variant result;
  result.value_.vt = VT_BOOL;
  result.value_.boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
  return result;
}

Variant Variant::Text(std::wstring_view text) {
  Variant result;
  result.value_.bstrVal = Bstr(text).release();
  result.value_.vt = VT_BSTR;
  return result;
}

Variant::Variant(Variant&& other) noexcept : value_(other.value_) { VariantInit(&other.value_); }

Variant& Variant::operator=(Variant&& other) noexcept {
  std::swap(value_, other.value_);
  return *this;
}

std::optional<Bstr> Variant::ToText() const {
  Variant converted;
  VARIANT source = value_;  // only read, but not declared so
  if (FAILED(VariantChangeTypeEx(&converted.value_, &source, LOCALE_INVARIANT, VARIANT_ALPHABOOL, VT_BSTR))) {
    return std::nullopt;
  }
  Bstr text;
  *text.put() = std::exchange(converted.value_.bstrVal, nullptr);
  return text;
}

}  // namespace quillmate::com
