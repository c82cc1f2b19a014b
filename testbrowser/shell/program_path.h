// Where the browser is installed: Internet Explorer's usual place, and the class that it adds to the
// system's.
#pragma once

#include <windows.h>

namespace testbrowser::shell {

inline constexpr wchar_t kProgramFolder[] = L"C:\\Program Files\\Internet Explorer\\";
inline constexpr wchar_t kProgramPath[] = L"C:\\Program Files\\Internet Explorer\\iexplore.exe";
/// The same program under another name, so that whoever ends all "iexplore.exe" leaves it alone.
inline constexpr wchar_t kShellWindowsPath[] = L"C:\\Program Files\\Internet Explorer\\shellwindows.exe";

/// Our class for the shell's window collection. Wine's desktop process serves the system's own class itself
/// (and answers E_NOTIMPL), so the prefix is told to treat that class as this one.
inline constexpr CLSID kShellWindowsClass{
    0x6B1F1C3E, 0x52B4, 0x4E0D, {0x9C, 0x37, 0x5D, 0x8A, 0x41, 0x0E, 0x73, 0x29}};
inline constexpr wchar_t kShellWindowsClassText[] = L"{6B1F1C3E-52B4-4E0D-9C37-5D8A410E7329}";

}  // namespace testbrowser::shell
