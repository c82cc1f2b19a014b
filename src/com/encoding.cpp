#include "com/encoding.h"

#include <windows.h>

namespace quillmate::com {
namespace {

std::string Narrow(std::wstring_view text, UINT code_page) {
  const int units = static_cast<int>(text.size());
  const int length = WideCharToMultiByte(code_page, 0, text.data(), units, nullptr, 0, nullptr, nullptr);
  std::string result(static_cast<size_t>(length > 0 ? length : 0), '\0');
  WideCharToMultiByte(code_page, 0, text.data(), units, result.data(), length, nullptr, nullptr);
  return result;
}

std::wstring Widen(std::string_view text, UINT code_page) {
  const int bytes = static_cast<int>(text.size());
  const int length = MultiByteToWideChar(code_page, 0, text.data(), bytes, nullptr, 0);
  std::wstring result(static_cast<size_t>(length > 0 ? length : 0), L'\0');
  MultiByteToWideChar(code_page, 0, text.data(), bytes, result.data(), length);
  return result;
}

}  // namespace

std::string ToAnsi(std::wstring_view text) { return Narrow(text, CP_ACP); }
std::wstring FromAnsi(std::string_view text) { return Widen(text, CP_ACP); }
std::string ToUtf8(std::wstring_view text) { return Narrow(text, CP_UTF8); }
std::wstring FromUtf8(std::string_view text) { return Widen(text, CP_UTF8); }

bool IsLeadByte(char byte) { return IsDBCSLeadByteEx(CP_ACP, static_cast<BYTE>(byte)) != FALSE; }

}  // namespace quillmate::com
