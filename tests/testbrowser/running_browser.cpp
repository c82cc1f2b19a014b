#include "running_browser.h"

#include <oleacc.h>
#include <gtest/gtest.h>

namespace testbrowser::test {

using quillmate::com::ComPtr;

bool Eventually(const std::function<bool()>& condition) {
  constexpr ULONGLONG kLimit = 60'000;  // ms; a busy machine takes its time to start an engine
  for (const ULONGLONG start = GetTickCount64(); GetTickCount64() - start < kLimit; Sleep(50)) {
    if (condition()) return true;
  }
  return false;
}

std::wstring ClassOf(HWND window) {
  wchar_t name[100] = L"";
  GetClassNameW(window, name, static_cast<int>(std::size(name)));
  return name;
}

std::wstring TextOf(HWND window) {
  wchar_t text[300] = L"";
  GetWindowTextW(window, text, static_cast<int>(std::size(text)));
  return text;
}

HWND Child(HWND parent, const wchar_t* class_name) {
  return FindWindowExW(parent, nullptr, class_name, nullptr);
}

std::wstring PageOf(const std::wstring& html) { return L"data:text/html," + html; }

RunningBrowser::RunningBrowser(const std::wstring& arguments, const std::wstring& title)
    : frame_title_(title) {
  std::wstring command = L"testbrowser.exe " + arguments;
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION started{};
  if (CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                     &started) == 0) {
    ADD_FAILURE() << "testbrowser.exe does not start, error " << GetLastError();
    return;
  }
  CloseHandle(started.hThread);
  process_.reset(started.hProcess);
  process_id_ = started.dwProcessId;
  EXPECT_TRUE(Eventually([this] { return Frame() != nullptr; })) << "no frame shows the page";
}

RunningBrowser::~RunningBrowser() {
  if (process_ == nullptr) return;
  TerminateProcess(process_.get(), 1);
  WaitForSingleObject(process_.get(), 5000);
}

HWND RunningBrowser::Window(const std::wstring& class_name, const std::wstring& title) const {
  for (HWND window = nullptr; (window = FindWindowExW(nullptr, window, nullptr, nullptr)) != nullptr;) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process == process_id_ && ClassOf(window) == class_name && TextOf(window).starts_with(title))
      return window;
  }
  return nullptr;
}

HWND RunningBrowser::Frame() const {
  HWND classic = Window(L"IEFrame", frame_title_);
  return classic != nullptr ? classic : Window(L"Chrome_WidgetWin_1", frame_title_);
}

HWND RunningBrowser::Server() const {
  HWND server = nullptr;
  EnumChildWindows(
      Frame(),
      [](HWND window, LPARAM found) {
        if (ClassOf(window) != L"Internet Explorer_Server") return TRUE;
        *reinterpret_cast<HWND*>(found) = window;
        return FALSE;
      },
      reinterpret_cast<LPARAM>(&server));
  return server;
}

ComPtr<IWebBrowser2> RunningBrowser::Object() const {
  DWORD_PTR result = 0;
  SendMessageTimeoutW(Server(), RegisterWindowMessageW(L"WM_HTML_GETOBJECT"), 0, 0, SMTO_ABORTIFHUNG, 5000,
                      &result);
  ComPtr<IServiceProvider> services;
  ComPtr<IWebBrowser2> browser;
  if (SUCCEEDED(ObjectFromLresult(static_cast<LRESULT>(result), __uuidof(IServiceProvider), 0,
                                  reinterpret_cast<void**>(services.GetAddressOf())))) {
    services->QueryService(__uuidof(IWebBrowserApp), __uuidof(IWebBrowser2),
                           reinterpret_cast<void**>(browser.GetAddressOf()));
  }
  return browser;
}

}  // namespace testbrowser::test
