#pragma once

#include <windows.h>
#include <oleauto.h>
#include <optional>
#include <string_view>

#include "com/bstr.h"
#include "com/com_ptr.h"

namespace quillmate::com {

/// An owned VARIANT.
class Variant {
 public:
  Variant() { VariantInit(&value_); }
  static Variant Int(LONG value);
  static Variant Bool(bool value);
  static Variant Text(std::wstring_view text);
  Variant(const Variant&) = delete;
  Variant& operator=(const Variant&) = delete;
  Variant(Variant&& other) noexcept;
  Variant& operator=(Variant&& other) noexcept;
  ~Variant() { VariantClear(&value_); }

  const VARIANT& get() const { return value_; }
  VARTYPE type() const { return value_.vt; }
  /// For an out parameter: clears what is held and gives the place for the new value.
  VARIANT* put() {
    VariantClear(&value_);
    return &value_;
  }
  /// The object held, as the interface asked for; null when no object is held or it has no such interface.
  template <class T>
  ComPtr<T> As() const {
    if (value_.vt != VT_DISPATCH && value_.vt != VT_UNKNOWN) return {};
    return Query<T>(value_.punkVal);
  }
  /// The value as text, converted by VariantChangeTypeEx in the invariant locale; nothing when it has no text
  /// form.
  std::optional<Bstr> ToText() const;

 private:
  VARIANT value_;
};

}  // namespace quillmate::com
