// UTF-8 to UTF-16 to the ANSI code page, with one bound for both steps.
#include "api/parameter_text.h"

#include <windows.h>

namespace quillmate::api {
namespace {

/// A conversion counts its terminator, and answers 0 when it fails.
bool IsConvertible(int count) {
  constexpr int kMaxCount = 0x7FFF8;
  return count > 0 && count <= kMaxCount;
}

}  // namespace

std::string ToCommandParams(const char* utf8) {
  if (utf8 == nullptr) return {};
  const int units = MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, utf8, -1, nullptr, 0);
  if (!IsConvertible(units)) return {};
  std::wstring wide(static_cast<size_t>(units), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, utf8, -1, wide.data(), units);

  const int bytes = WideCharToMultiByte(CP_ACP, 0, wide.c_str(), -1, nullptr, 0, nullptr, nullptr);
  if (!IsConvertible(bytes)) return {};
  std::string ansi(static_cast<size_t>(bytes), '\0');
  WideCharToMultiByte(CP_ACP, 0, wide.c_str(), -1, ansi.data(), bytes, nullptr, nullptr);
  ansi.pop_back();
  return ansi;
}

}  // namespace quillmate::api
