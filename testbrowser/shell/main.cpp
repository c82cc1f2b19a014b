// testbrowser.exe: Internet Explorer's windows and COM objects outside, Chromium inside.
#include <windows.h>
#include <exdisp.h>
#include <mshtml.h>
#include <shellapi.h>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "com/encoding.h"
#include "dom/held_interfaces.h"
#include "engine/switches.h"
#include "shell/application.h"
#include "shell/call_filter.h"
#include "shell/class_object.h"
#include "shell/command_line.h"
#include "shell/frame.h"
#include "shell/program_path.h"
#include "shell/registration.h"
#include "shell/shell_windows.h"
#include "shell/tab.h"

namespace testbrowser::shell {
namespace {

/// The UI thread's single-threaded apartment.
class Apartment {
 public:
  Apartment() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
  ~Apartment() { CoUninitialize(); }
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;
};

constexpr UINT kUnusedLife = 30'000;  // ms that a server waits for its first client

std::vector<std::wstring> Arguments() {
  int count = 0;
  const std::unique_ptr<LPWSTR, decltype(&LocalFree)> words(CommandLineToArgvW(GetCommandLineW(), &count),
                                                            &LocalFree);
  return {words.get() + 1, words.get() + count};
}

ShellKind KindOf(const CommandLine& line) {
  ShellKind kind = line.hosted ? HostedShell() : InternetExplorerShell();
  if (!line.title_suffix.empty()) kind.title_suffix = line.title_suffix;
  return kind;
}

/// What the program that started this one wants its first window to look like.
int ShowCommand(const CommandLine& line) {
  if (line.hidden) return SW_HIDE;
  STARTUPINFOW info{};
  GetStartupInfoW(&info);
  return (info.dwFlags & STARTF_USESHOWWINDOW) != 0 ? info.wShowWindow : SW_SHOWNORMAL;
}

int Browse(const CommandLine& line, CallFilter& filter) {
  Application application(KindOf(line));
  filter.RetryWhile([&] { return application.RefusesCalls(); });
  auto page = application.OpenPage();
  if (page == nullptr) return 1;
  dom::HoldInterfaces();
  application.OpenFrame(std::move(page), ShowCommand(line)).Navigate(line.address);
  application.Run();
  return 0;
}

int ServeBrowser(const CommandLine& line, CallFilter& filter) {
  Application application(KindOf(line));
  filter.RetryWhile([&] { return application.RefusesCalls(); });
  const UINT_PTR unused =
      SetTimer(nullptr, 0, kUnusedLife, [](HWND, UINT, UINT_PTR, DWORD) { PostQuitMessage(0); });
  std::shared_ptr<engine::Page> page;
  const ClassObject browsers(
      CLSID_InternetExplorer, ClassObject::Use::kOneObject, [&](REFIID iid, void** out) {
        KillTimer(nullptr, unused);
        if (page == nullptr) return E_FAIL;
        return application.OpenFrame(std::move(page), SW_HIDE).Browser()->QueryInterface(iid, out);
      });
  // Chromium comes up while the client's side still looks for this server.
  page = application.OpenPage();
  dom::HoldInterfaces();
  application.Run();
  return 0;
}

/// The collection's server stays a little longer than its last client, who often comes again. One that COM
/// did not start stays as long as the desktop, as Windows' own does.
int ServeWindows(const CommandLine& line) {
  constexpr UINT kIdleLife = 10'000;  // ms
  int users = 0;
  UINT_PTR idle = 0;
  const auto wait_for_users = [&](UINT time) {
    if (!line.started_by_com) return;
    idle = SetTimer(nullptr, idle, time, [](HWND, UINT, UINT_PTR, DWORD) { PostQuitMessage(0); });
  };
  wait_for_users(kUnusedLife);
  const ClassObject collections(kShellWindowsClass, ClassObject::Use::kManyObjects,
                                [&](REFIID iid, void** out) {
                                  ++users;
                                  KillTimer(nullptr, idle);
                                  const auto on_gone = [&] {
                                    if (--users == 0) wait_for_users(kIdleLife);
                                  };
                                  return dom::MakeObject<ShellWindows>(on_gone)->QueryInterface(iid, out);
                                });
  // Whoever started it by hand can tell from now on that it serves.
  if (!line.started_by_com) std::cout << "ready" << std::endl;
  MSG message{};
  while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
  return 0;
}

int Run(const CommandLine& line) {
  if (line.purpose == CommandLine::Purpose::kMistake) {
    std::cerr << kUsage;
    return 2;
  }
  if (line.purpose == CommandLine::Purpose::kRegister) return Register();
  for (const std::wstring& setting : line.switches) engine::SetSwitch(quillmate::com::ToUtf8(setting));
  const Apartment apartment;
  CallFilter filter;
  // Held from now on: otherwise the first proxies read whole libraries, 100 ms each.
  dom::TypeInfoOf(__uuidof(IHTMLDocument2));
  dom::TypeInfoOf(__uuidof(IWebBrowser2));
  if (line.purpose == CommandLine::Purpose::kServeWindows) return ServeWindows(line);
  const int status =
      line.purpose == CommandLine::Purpose::kServeBrowser ? ServeBrowser(line, filter) : Browse(line, filter);
  filter.RetryWhile(nullptr);
  // The answer to the call that closed the last window is on another thread, which ends with the process.
  constexpr DWORD kLastAnswers = 200;  // ms
  Sleep(kLastAnswers);
  return status;
}

}  // namespace
}  // namespace testbrowser::shell

int main() {
  return testbrowser::shell::Run(testbrowser::shell::ParseCommandLine(testbrowser::shell::Arguments()));
}
