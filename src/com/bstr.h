#pragma once

#include <windows.h>
#include <oleauto.h>
#include <new>
#include <string>
#include <string_view>
#include <utility>

namespace quillmate::com {

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

}  // namespace quillmate::com
