// Processes and their windows.
#include "support/browser.h"

#include <mshtml.h>
#include <oleacc.h>
#include <cstdlib>
#include <stdexcept>

#include "com/encoding.h"
#include "com/owned.h"
#include "support/real_browser.h"
#include "support/under_test.h"

namespace quillmate::test {
namespace {

constexpr DWORD kEndMs = 5000;
/// Engines start slowly on a busy machine.
constexpr ULONGLONG kStartMs = 60'000;
/// A page that goes on loading for longer is taken as it is.
constexpr ULONGLONG kLoadMs = 20'000;
constexpr DWORD kRoundMs = 50;

std::wstring TestBrowserPath() {
  wchar_t path[MAX_PATH] = L"";
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  std::wstring result = path;
  return result.substr(0, result.rfind(L'\\') + 1) + L"testbrowser.exe";
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

/// A page's window is there before its document.
bool IsLoaded(HWND page) {
  static const UINT question = RegisterWindowMessageW(L"WM_HTML_GETOBJECT");
  DWORD_PTR answer = 0;
  SendMessageTimeoutW(page, question, 0, 0, SMTO_ABORTIFHUNG, 1000, &answer);
  com::ComPtr<IHTMLDocument2> document;
  com::Bstr state;
  return answer != 0 &&
         SUCCEEDED(ObjectFromLresult(static_cast<LRESULT>(answer), __uuidof(IHTMLDocument2), 0,
                                     reinterpret_cast<void**>(document.GetAddressOf()))) &&
         SUCCEEDED(document->get_readyState(state.put())) && state.view() == L"complete";
}

void End(HANDLE process) {
  TerminateProcess(process, 1);
  WaitForSingleObject(process, kEndMs);
}

}  // namespace

Browser::Browser(const std::string& url, Shell shell) : shell_(shell) {
  if (UnderTest() == BrowserKind::kTestBrowser)
    StartTestBrowser(url);
  else
    StartReal(url);
  const com::Apartment apartment;
  for (const ULONGLONG begin = GetTickCount64(); GetTickCount64() - begin < kStartMs;) {
    HWND page = Page();
    if (page != nullptr && (IsLoaded(page) || GetTickCount64() - begin > kLoadMs)) return;
    Sleep(kRoundMs);
  }
  Kill();
  throw std::runtime_error("the browser shows no page");
}

Browser::~Browser() {
  if (real_frame_ == nullptr || !CloseFrame(real_frame_)) Kill();
}

void Browser::StartTestBrowser(const std::string& url) {
  std::wstring command = L'"' + TestBrowserPath() + L'"';
  if (shell_ == Shell::kHosted) command += L" --shell hosted";
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
}

void Browser::StartReal(const std::string& url) {
  const BrowserKind kind = UnderTest();
  if (shell_ == Shell::kHosted && kind != BrowserKind::kEdge)
    SkipTest("It needs Edge in Internet Explorer mode.");
  real_frame_ = StartRealBrowser(kind, url);
  process_id_ = ProcessOf(real_frame_);
  if (IsSpared(process_id_)) return;
  process_.reset(OpenProcess(PROCESS_TERMINATE | SYNCHRONIZE, FALSE, process_id_));
}

void Browser::Kill() {
  if (process_ == nullptr) return;
  End(process_.get());
  process_.reset();
}

void Browser::SetSwitch(const wchar_t* setting) const {
  TestBrowserOnly("sets a switch of the browser's");
  const ATOM text = GlobalAddAtomW(setting);
  SendMessageW(Page(), RegisterWindowMessageW(L"testbrowser switch"), text, 0);
  GlobalDeleteAtom(text);
}

HWND Browser::TopLevelWindow(const wchar_t* class_name) const { return FirstWindow(class_name, process_id_); }

HWND Browser::Frame() const {
  if (real_frame_ != nullptr) return IsWindow(real_frame_) ? real_frame_ : nullptr;
  return TopLevelWindow(shell_ == Shell::kHosted ? L"Chrome_WidgetWin_1" : L"IEFrame");
}

HWND Browser::Page() const {
  HWND frame = Frame();
  return frame != nullptr ? FindPage(frame) : nullptr;
}

std::string FilePage(const std::string& name) {
  const char* root = std::getenv("QUILLMATE_ROOT");
  if (root == nullptr)
    SkipTest("It needs files of the project's source folder, which is not on this machine.");
  // Wine shows the machine's files under this letter.
  return std::string("file:///Z:") + root + "/tests/pages/" + name;
}

void EndStartedBrowsers() {
  HWND frame = nullptr;
  while ((frame = FindWindowExW(nullptr, frame, L"IEFrame", nullptr)) != nullptr) {
    const DWORD id = ProcessOf(frame);
    if (IsSpared(id)) continue;
    const com::UniqueHandle process(OpenProcess(PROCESS_TERMINATE | SYNCHRONIZE, FALSE, id));
    if (process == nullptr) return;
    End(process.get());
    frame = nullptr;  // its place in the list of windows has gone with it
  }
}

}  // namespace quillmate::test
