#include "browser_windows.h"

#include <windows.h>

#include <array>
#include <bit>
#include <string_view>

namespace quillmate::player {
namespace {

bool IsBrowser(HWND window) {
  std::array<wchar_t, 64> name{};
  const int length = GetClassNameW(window, name.data(), static_cast<int>(name.size()));
  const std::wstring_view text(name.data(), static_cast<std::size_t>(length));
  return text == L"IEFrame" || text == L"Internet Explorer_TridentDlgFrame";
}

BOOL CALLBACK Collect(HWND window, LPARAM argument) {
  DWORD process = 0;
  if (IsBrowser(window) && GetWindowThreadProcessId(window, &process) != 0)
    reinterpret_cast<std::vector<BrowserWindow>*>(argument)->push_back(
        {static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(window)), process});
  return TRUE;
}

}  // namespace

HWND HandleOf(const BrowserWindow& window) {
  return std::bit_cast<HWND>(static_cast<std::uintptr_t>(window.handle));
}

std::vector<BrowserWindow> FindBrowserWindows() {
  std::vector<BrowserWindow> windows;
  EnumWindows(Collect, reinterpret_cast<LPARAM>(&windows));
  return windows;
}

}  // namespace quillmate::player
