#include "shell/registration.h"

#include <windows.h>
#include <iostream>
#include <string>

#include "com/encoding.h"
#include "shell/program_path.h"

namespace testbrowser::shell {
namespace {

constexpr wchar_t kBrowserClassText[] = L"{0002DF01-0000-0000-C000-000000000046}";
constexpr wchar_t kSystemShellWindowsText[] = L"{9BA05972-F6A8-11CF-A442-00A0C90A8F39}";
constexpr wchar_t kProgId[] = L"InternetExplorer.Application";

std::wstring ClassKey(const std::wstring& class_id) { return L"CLSID\\" + class_id; }

bool CopyProgramTo(const std::wstring& path) {
  wchar_t self[MAX_PATH] = L"";
  GetModuleFileNameW(nullptr, self, MAX_PATH);
  CreateDirectoryW(kProgramFolder, nullptr);
  // A browser that still runs keeps its file: it is moved out of the way.
  const std::wstring aside = path + L".old";
  DeleteFileW(aside.c_str());
  MoveFileW(path.c_str(), aside.c_str());
  const bool copied = CopyFileW(self, path.c_str(), FALSE) != 0;
  DeleteFileW(aside.c_str());
  return copied;
}

bool SetDefault(const std::wstring& key, const std::wstring& value) {
  const DWORD bytes = static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t));
  return RegSetKeyValueW(HKEY_CLASSES_ROOT, key.c_str(), nullptr, REG_SZ, value.c_str(), bytes) ==
         ERROR_SUCCESS;
}

bool RegisterServer(const std::wstring& class_id, const std::wstring& command) {
  return SetDefault(ClassKey(class_id) + L"\\LocalServer32", command);
}

std::wstring Quoted(const std::wstring& path) { return L"\"" + path + L"\""; }

bool RegisterClasses() {
  return RegisterServer(kBrowserClassText, Quoted(kProgramPath)) &&
         SetDefault(std::wstring(kProgId) + L"\\CLSID", kBrowserClassText) &&
         RegisterServer(kShellWindowsClassText, Quoted(kShellWindowsPath) + L" -ShellWindows") &&
         SetDefault(ClassKey(kSystemShellWindowsText) + L"\\TreatAs", kShellWindowsClassText);
}

}  // namespace

int Register() {
  if (!CopyProgramTo(kProgramPath) || !CopyProgramTo(kShellWindowsPath)) {
    std::cerr << "testbrowser: cannot copy this program to " << quillmate::com::ToUtf8(kProgramPath)
              << std::endl;
    return 1;
  }
  if (!RegisterClasses()) {
    std::cerr << "testbrowser: cannot write the registry" << std::endl;
    return 1;
  }
  return 0;
}

}  // namespace testbrowser::shell
