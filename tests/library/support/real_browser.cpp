// Edge takes the switches that drivers give it: then every page is an Internet Explorer page, whatever the
// machine's list of sites says.
#include "support/real_browser.h"

#include <exdisp.h>
#include <filesystem>
#include <set>
#include <sstream>
#include <stdexcept>
#include <thread>

#include "com/encoding.h"
#include "com/owned.h"

namespace quillmate::test {
namespace {

constexpr int kRounds = 600;
constexpr DWORD kRoundMs = 50;
constexpr int kCloseRounds = 100;

constexpr wchar_t kSparedVariable[] = L"QUILLMATE_SPARED_BROWSERS";
std::set<DWORD> spared;

template <class Visit>
void ForEachFrame(Visit visit) {
  for (const wchar_t* name : {L"IEFrame", L"Chrome_WidgetWin_1"}) {
    for (HWND frame = nullptr; (frame = FindWindowExW(nullptr, frame, name, nullptr)) != nullptr;)
      visit(frame);
  }
}

DWORD ProcessOf(HWND window) {
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  return process;
}

HWND StartInternetExplorer(const std::string& url) {
  const com::Apartment apartment;
  com::ComPtr<IWebBrowser2> browser;
  SHANDLE_PTR frame = 0;
  com::Variant address = com::Variant::Text(com::FromUtf8(url));
  com::Variant none;
  VARIANT target = address.get();
  if (FAILED(
          CoCreateInstance(CLSID_InternetExplorer, nullptr, CLSCTX_LOCAL_SERVER, IID_PPV_ARGS(&browser))) ||
      FAILED(browser->put_Visible(VARIANT_TRUE)) || FAILED(browser->get_HWND(&frame)) ||
      FAILED(browser->Navigate2(&target, none.put(), none.put(), none.put(), none.put())))
    return nullptr;
  return reinterpret_cast<HWND>(frame);
}

std::wstring EdgeProgram() {
  wchar_t path[MAX_PATH] = L"";
  DWORD bytes = sizeof path;
  RegGetValueW(HKEY_LOCAL_MACHINE, L"Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\msedge.exe",
               nullptr, RRF_RT_REG_SZ, nullptr, path, &bytes);
  return path;
}

/// A profile of its own: an Edge that runs already would take the address over and end.
std::wstring NewProfile() {
  static int count = 0;
  return (std::filesystem::temp_directory_path() /
          ("quillmate-edge-" + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(++count)))
      .wstring();
}

bool StartEdgeProgram(const std::string& url) {
  std::wstring command =
      L'"' + EdgeProgram() +
      L"\" --ie-mode-force --internet-explorer-integration=iemode --no-first-run --no-service-autorun "
      L"--disable-sync --disable-features=msImplicitSignin --disable-popup-blocking --user-data-dir=\"" +
      NewProfile() + L"\" " + com::FromUtf8(url);
  STARTUPINFOW startup = {};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION started = {};
  if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                      &started))
    return false;
  CloseHandle(started.hThread);
  CloseHandle(started.hProcess);
  return true;
}

/// Not the started process's: Edge may hand its window to another one.
HWND StartEdge(const std::string& url) {
  std::set<HWND> before;
  ForEachFrame([&](HWND frame) { before.insert(frame); });
  if (EdgeProgram().empty() || !StartEdgeProgram(url)) return nullptr;
  HWND found = nullptr;
  for (int round = 0; round < kRounds && found == nullptr; ++round) {
    ForEachFrame([&](HWND frame) {
      if (!before.contains(frame) && FindPage(frame) != nullptr) found = frame;
    });
    if (found == nullptr) Sleep(kRoundMs);
  }
  return found;
}

}  // namespace

HWND FindPage(HWND parent) {
  HWND child = nullptr;
  while ((child = FindWindowExW(parent, child, nullptr, nullptr)) != nullptr) {
    wchar_t name[64] = L"";
    GetClassNameW(child, name, 64);
    if (std::wstring_view(name) == L"Internet Explorer_Server") return child;
    if (HWND found = FindPage(child)) return found;
  }
  return nullptr;
}

HWND StartRealBrowser(BrowserKind kind, const std::string& url) {
  HWND frame = nullptr;
  // On a thread of its own: the apartment must not be the test's.
  std::thread([&] {
    frame = kind == BrowserKind::kEdge ? StartEdge(url) : StartInternetExplorer(url);
  }).join();
  if (frame != nullptr) return frame;
  throw std::runtime_error(kind == BrowserKind::kEdge ? "Edge shows no page in Internet Explorer mode"
                                                      : "Internet Explorer cannot be started");
}

bool CloseFrame(HWND frame) {
  PostMessageW(frame, WM_CLOSE, 0, 0);
  for (int round = 0; round < kCloseRounds && IsWindow(frame); ++round) Sleep(kRoundMs);
  return !IsWindow(frame);
}

void SpareRunningBrowsers() {
  std::wstring list(32'000, L'\0');
  list.resize(GetEnvironmentVariableW(kSparedVariable, list.data(), static_cast<DWORD>(list.size())));
  if (list.empty()) {
    ForEachFrame([&](HWND frame) { list += std::to_wstring(ProcessOf(frame)) + L" "; });
    SetEnvironmentVariableW(kSparedVariable, (list + L"0").c_str());
  }
  std::wistringstream stream(list);
  for (DWORD process = 0; stream >> process;) spared.insert(process);
}

bool IsSpared(DWORD process) { return spared.contains(process); }

}  // namespace quillmate::test
