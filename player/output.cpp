#include "output.h"

#include <array>

#include "windows_text.h"

namespace quillmate::player {

void StandardStream::Write(std::string_view utf8) {
  DWORD mode = 0;
  DWORD written = 0;
  if (GetConsoleMode(handle_, &mode)) {
    const std::wstring wide = WideFromUtf8(utf8);
    WriteConsoleW(handle_, wide.data(), static_cast<DWORD>(wide.size()), &written, nullptr);
    return;
  }
  while (!utf8.empty()) {
    if (!WriteFile(handle_, utf8.data(), static_cast<DWORD>(utf8.size()), &written, nullptr)) {
      good_ = false;
      return;
    }
    utf8.remove_prefix(written);
  }
}

std::optional<std::size_t> StandardStream::ConsoleColumns() const {
  CONSOLE_SCREEN_BUFFER_INFO info;
  if (!GetConsoleScreenBufferInfo(handle_, &info)) return std::nullopt;
  // The last column stays free: writing into it would wrap the line.
  const int columns = info.srWindow.Right - info.srWindow.Left;
  return static_cast<std::size_t>(columns > 0 ? columns : 79);
}

HANDLE TakeStandardHandle(DWORD which) {
  const HANDLE shared = GetStdHandle(which);
  HANDLE own = nullptr;
  if (!DuplicateHandle(GetCurrentProcess(), shared, GetCurrentProcess(), &own, 0, FALSE,
                       DUPLICATE_SAME_ACCESS))
    return shared;
  SetStdHandle(which, CreateFileW(L"NUL", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                  nullptr, OPEN_EXISTING, 0, nullptr));
  CloseHandle(shared);
  return own;
}

std::string ReadStandardInput() {
  std::string text;
  std::array<char, 65536> block{};
  DWORD read = 0;
  while (ReadFile(GetStdHandle(STD_INPUT_HANDLE), block.data(), static_cast<DWORD>(block.size()), &read,
                  nullptr) &&
         read > 0)
    text.append(block.data(), read);
  return text;
}

}  // namespace quillmate::player
