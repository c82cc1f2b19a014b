#include "windows_text.h"

#include <windows.h>

namespace quillmate::player {
namespace {

std::wstring Widen(UINT code_page, std::string_view text) {
  const int length = static_cast<int>(text.size());
  std::wstring wide(
      static_cast<std::size_t>(MultiByteToWideChar(code_page, 0, text.data(), length, nullptr, 0)), L'\0');
  MultiByteToWideChar(code_page, 0, text.data(), length, wide.data(), static_cast<int>(wide.size()));
  return wide;
}

}  // namespace

std::string Utf8FromWide(std::wstring_view text) {
  const int length = static_cast<int>(text.size());
  std::string utf8(static_cast<std::size_t>(
                       WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr)),
                   '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), length, utf8.data(), static_cast<int>(utf8.size()), nullptr,
                      nullptr);
  return utf8;
}

std::wstring WideFromUtf8(std::string_view text) { return Widen(CP_UTF8, text); }

std::string Utf8FromAnsi(std::string_view text) { return Utf8FromWide(Widen(CP_ACP, text)); }

}  // namespace quillmate::player
