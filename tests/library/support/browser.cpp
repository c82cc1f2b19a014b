// Processes and their windows.
#include "support/browser.h"

#include <algorithm>
#include <stdexcept>

#include "com/encoding.h"

namespace quillmate::test {
namespace {

constexpr DWORD kEndMs = 5000;
constexpr int kStartRounds = 300;
constexpr DWORD kRoundMs = 50;

std::wstring TestBrowserPath() {
  wchar_t path[MAX_PATH] = L"";
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  std::wstring result = path;
  return result.substr(0, result.rfind(L'\\') + 1) + L"testbrowser.exe";
}

bool IsClass(HWND window, const wchar_t* name) {
  wchar_t actual[256] = L"";
  GetClassNameW(window, actual, 256);
  return std::wstring_view(actual) == name;
}

DWORD ProcessOf(HWND window) {
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  return process;
}

HWND FirstWindow(const wchar_t* class_name, DWORD process) {
  HWND window = nullptr;
  while ((window = FindWindowExW(nullptr, window, class_name, nullptr)) != nullptr) {
    if (ProcessOf(window) == process) return window;
  }
  return nullptr;
}

HWND FindPage(HWND parent) {
  HWND child = nullptr;
  while ((child = FindWindowExW(parent, child, nullptr, nullptr)) != nullptr) {
    if (IsClass(child, L"Internet Explorer_Server")) return child;
    if (HWND found = FindPage(child)) return found;
  }
  return nullptr;
}

void End(HANDLE process) {
  TerminateProcess(process, 1);
  WaitForSingleObject(process, kEndMs);
}

}  // namespace

Browser::Browser(const std::string& url, Shell shell) : shell_(shell) {
  std::wstring command = L'"' + TestBrowserPath() + L'"';
  if (shell == Shell::kHosted) command += L" --shell hosted";
  command += L" \"" + com::FromUtf8(url) + L'"';
  STARTUPINFOW startup = {};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION started = {};
  if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                      &started)) {
    throw std::runtime_error("the test browser cannot be started");
  }
  CloseHandle(started.hThread);
  process_.reset(started.hProcess);
  process_id_ = started.dwProcessId;
  for (int round = 0; round < kStartRounds; ++round) {
    if (Page() != nullptr) return;
    Sleep(kRoundMs);
  }
  End(process_.get());
  throw std::runtime_error("the test browser shows no page");
}

void Browser::Kill() {
  if (process_ == nullptr) return;
  End(process_.get());
  process_.reset();
}

HWND Browser::TopLevelWindow(const wchar_t* class_name) const { return FirstWindow(class_name, process_id_); }

HWND Browser::Page() const {
  HWND frame = Frame();
  return frame != nullptr ? FindPage(frame) : nullptr;
}

std::string FilePage(const std::string& name) {
  // Wine shows the machine's files under this letter.
  return "file:///Z:" QUILLMATE_TEST_PAGES "/" + name;
}

void EndStartedBrowsers() {
  while (HWND frame = FindWindowExW(nullptr, nullptr, L"IEFrame", nullptr)) {
    const com::UniqueHandle process(OpenProcess(PROCESS_TERMINATE | SYNCHRONIZE, FALSE, ProcessOf(frame)));
    if (process == nullptr) return;
    End(process.get());
  }
}

}  // namespace quillmate::test
