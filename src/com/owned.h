#pragma once

#include <windows.h>
#include <objbase.h>
#include <oleauto.h>
#include <unknwn.h>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <wrl/client.h>

namespace quillmate::com {

using Microsoft::WRL::ComPtr;

/// Asks an object for another of its interfaces.
/// @return the interface, owned; null when the object is null or has no such interface.
template <class T>
ComPtr<T> Query(IUnknown* object) {
  ComPtr<T> result;
  if (object != nullptr) object->QueryInterface(__uuidof(T), reinterpret_cast<void**>(result.GetAddressOf()));
  return result;
}

template <class T, class U>
ComPtr<T> Query(const ComPtr<U>& object) {
  // Asked through its own type: an object of several interfaces has several IUnknown bases.
  ComPtr<T> result;
  if (object != nullptr) object->QueryInterface(__uuidof(T), reinterpret_cast<void**>(result.GetAddressOf()));
  return result;
}

/// Whether two interface pointers belong to the same object (compared through IUnknown; two nulls are the
/// same).
inline bool IsSameObject(IUnknown* a, IUnknown* b) {
  return Query<IUnknown>(a).Get() == Query<IUnknown>(b).Get();
}

struct HandleCloser {
  void operator()(HANDLE handle) const { CloseHandle(handle); }
};
/// A kernel handle (process, thread, event); null means none.
using UniqueHandle = std::unique_ptr<std::remove_pointer_t<HANDLE>, HandleCloser>;

/// An owned BSTR. A null BSTR is the empty text, as everywhere in COM.
class Bstr {
 public:
  Bstr() = default;
  /// @throws std::bad_alloc when there is no memory for the copy.
  explicit Bstr(std::wstring_view text)
      : text_(SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {
    if (text_ == nullptr) throw std::bad_alloc();
  }
  Bstr(const Bstr&) = delete;
  Bstr& operator=(const Bstr&) = delete;
  Bstr(Bstr&& other) noexcept : text_(std::exchange(other.text_, nullptr)) {}
  Bstr& operator=(Bstr&& other) noexcept {
    std::swap(text_, other.text_);
    return *this;
  }
  ~Bstr() { SysFreeString(text_); }

  BSTR get() const { return text_; }
  /// For an out parameter: frees what is held and gives the place for the new text.
  BSTR* put() {
    SysFreeString(std::exchange(text_, nullptr));
    return &text_;
  }
  /// Hands the text to the caller, who frees it.
  BSTR release() { return std::exchange(text_, nullptr); }
  std::wstring_view view() const { return {text_ != nullptr ? text_ : L"", SysStringLen(text_)}; }
  bool empty() const { return SysStringLen(text_) == 0; }

 private:
  BSTR text_ = nullptr;
};

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

/// Puts the thread into a single-threaded apartment. A thread that is in a multi-threaded one already stays
/// there.
class Apartment {
 public:
  Apartment() : result_(CoInitialize(nullptr)) {}
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;
  ~Apartment() {
    if (SUCCEEDED(result_)) CoUninitialize();
  }

 private:
  HRESULT result_;
};

}  // namespace quillmate::com
