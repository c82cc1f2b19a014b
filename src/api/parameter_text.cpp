// UTF-8 to UTF-16 to the ANSI code page, with one bound for both steps.
#include "api/parameter_text.h"

#include <windows.h>

#include "api/unicode_escapes.h"

namespace quillmate {
namespace {

/// A conversion counts its terminator, and returns 0 when it fails.
bool IsConvertible(int count) {
  constexpr int kMaxCount = 0x7FFF8;
  return count > 0 && count <= kMaxCount;
}

std::wstring ToWide(const char* utf8, int units) {
  std::wstring wide(static_cast<size_t>(units), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, utf8, -1, wide.data(), units);
  return wide;
}

char AsciiInCodePage(char32_t character) {
  if (character > 0xFFFF) return 0;
  const wchar_t unit = static_cast<wchar_t>(character);
  char bytes[8] = "";
  const int length = WideCharToMultiByte(CP_ACP, 0, &unit, 1, bytes, sizeof bytes, nullptr, nullptr);
  return length == 1 && static_cast<unsigned char>(bytes[0]) < 0x80 ? bytes[0] : '\0';
}

/// In some code pages a backslash is also the second byte of characters. There the parser must read it as one
/// byte and not as the begin of an escape.
std::string EscapeSecondBytes(std::string_view ansi) {
  std::string escaped;
  escaped.reserve(ansi.size());
  for (size_t i = 0; i < ansi.size(); ++i) {
    escaped += ansi[i];
    if (!IsDBCSLeadByte(static_cast<BYTE>(ansi[i])) || i + 1 == ansi.size()) continue;
    escaped += ansi[++i];
    if (ansi[i] == '\\') escaped += '\\';
  }
  return escaped;
}

}  // namespace

std::string ToCommandParams(const char* utf8) {
  if (utf8 == nullptr) return {};
  if (!IsConvertible(MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, utf8, -1, nullptr, 0))) return {};
  const std::string decoded = DecodeUnicodeEscapes(utf8, AsciiInCodePage);
  const int units = MultiByteToWideChar(CP_UTF8, 0, decoded.c_str(), -1, nullptr, 0);
  const std::wstring wide = ToWide(decoded.c_str(), units);
  const int bytes = WideCharToMultiByte(CP_ACP, 0, wide.c_str(), -1, nullptr, 0, nullptr, nullptr);
  if (!IsConvertible(bytes)) return {};
  std::string ansi(static_cast<size_t>(bytes), '\0');
  WideCharToMultiByte(CP_ACP, 0, wide.c_str(), -1, ansi.data(), bytes, nullptr, nullptr);
  ansi.pop_back();
  return EscapeSecondBytes(ansi);
}

}  // namespace quillmate
