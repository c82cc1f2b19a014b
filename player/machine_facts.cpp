#include "machine_facts.h"

#include <windows.h>

#include <shellscalingapi.h>
#include <tlhelp32.h>
#include <wtsapi32.h>

#include <algorithm>
#include <filesystem>

#include "browser_guard.h"
#include "browser_windows.h"
#include "registry.h"
#include "windows_text.h"

namespace quillmate::player {
namespace {

const std::wstring kExplorer = L"Software\\Microsoft\\Internet Explorer";
const std::wstring kExplorerPolicies = L"Software\\Policies\\Microsoft\\Internet Explorer\\Main";
const std::wstring kEdgePolicies = L"Software\\Policies\\Microsoft\\Edge";
const std::wstring kZones = L"Software\\Microsoft\\Windows\\CurrentVersion\\Internet Settings\\Zones\\";
const std::wstring kZonePolicies =
    L"Software\\Policies\\Microsoft\\Windows\\CurrentVersion\\Internet Settings\\Zones\\";
const std::wstring kWindows = L"Software\\Microsoft\\Windows NT\\CurrentVersion";
const std::wstring kBrowserServer = L"CLSID\\{0002DF01-0000-0000-C000-000000000046}\\LocalServer32";
const std::wstring kAppPaths = L"Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\";

struct DesktopCloser {
  void operator()(HDESK desktop) const { CloseDesktop(desktop); }
};

std::string InputDesktop() {
  const std::unique_ptr<std::remove_pointer_t<HDESK>, DesktopCloser> desktop(
      OpenInputDesktop(0, FALSE, DESKTOP_READOBJECTS));
  std::array<wchar_t, 128> name{};
  DWORD needed = 0;
  if (!desktop || !GetUserObjectInformationW(desktop.get(), UOI_NAME, name.data(), sizeof name, &needed))
    return {};
  return Utf8FromWide(name.data());
}

DWORD OwnSession() {
  DWORD session = 0;
  ProcessIdToSessionId(GetCurrentProcessId(), &session);
  return session;
}

// What cannot be asked counts as connected: there is no other sign of the opposite.
bool IsConnected() {
  wchar_t* data = nullptr;
  DWORD bytes = 0;
  if (!WTSQuerySessionInformationW(WTS_CURRENT_SERVER_HANDLE, WTS_CURRENT_SESSION, WTSConnectState, &data,
                                   &bytes))
    return true;
  const auto state = *reinterpret_cast<const WTS_CONNECTSTATE_CLASS*>(data);
  WTSFreeMemory(data);
  return state == WTSActive || state == WTSConnected;
}

int IntegrityOf(HANDLE process) {
  HANDLE opened = nullptr;
  if (!OpenProcessToken(process, TOKEN_QUERY, &opened)) return 0;
  const UniqueHandle token(opened);
  alignas(TOKEN_MANDATORY_LABEL) std::array<unsigned char, 128> buffer{};
  DWORD bytes = 0;
  if (!GetTokenInformation(opened, TokenIntegrityLevel, buffer.data(), static_cast<DWORD>(buffer.size()),
                           &bytes))
    return 0;
  const auto* const label = reinterpret_cast<const TOKEN_MANDATORY_LABEL*>(buffer.data());
  const DWORD last = *GetSidSubAuthorityCount(label->Label.Sid) - 1U;
  return static_cast<int>(*GetSidSubAuthority(label->Label.Sid, last));
}

// Not the message for it: a window that hangs would not answer.
std::string TitleOf(HWND window) {
  std::array<wchar_t, 256> title{};
  const int length = InternalGetWindowText(window, title.data(), static_cast<int>(title.size()));
  return Utf8FromWide({title.data(), static_cast<std::size_t>(length)});
}

std::vector<BrowserFact> Browsers() {
  std::vector<BrowserFact> browsers;
  for (const BrowserWindow& window : FindBrowserWindows()) {
    const UniqueHandle process(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, window.process));
    browsers.push_back({TitleOf(HandleOf(window)), process ? IntegrityOf(process.get()) : 0});
  }
  return browsers;
}

BOOL CALLBACK AddMonitor(HMONITOR monitor, HDC, RECT*, LPARAM argument) {
  auto& monitors = *reinterpret_cast<std::vector<MonitorFact>*>(argument);
  UINT x = 96;
  UINT y = 96;
  GetDpiForMonitor(monitor, MDT_EFFECTIVE_DPI, &x, &y);
  monitors.push_back({static_cast<int>(monitors.size()) + 1, static_cast<int>(x)});
  return TRUE;
}

std::vector<MonitorFact> Monitors() {
  // A program that knows nothing of scaling is shown an unscaled screen.
  SetThreadDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE);
  std::vector<MonitorFact> monitors;
  EnumDisplayMonitors(nullptr, nullptr, AddMonitor, reinterpret_cast<LPARAM>(&monitors));
  return monitors;
}

BOOL CALLBACK AddHungWindow(HWND window, LPARAM argument) {
  if (IsWindowVisible(window) && IsHungAppWindow(window))
    reinterpret_cast<std::vector<std::string>*>(argument)->push_back(TitleOf(window));
  return TRUE;
}

std::vector<std::string> HungWindows() {
  std::vector<std::string> titles;
  EnumWindows(AddHungWindow, reinterpret_cast<LPARAM>(&titles));
  return titles;
}

std::optional<bool> ProtectedMode(int zone) {
  const std::wstring number = std::to_wstring(zone);
  constexpr const wchar_t* kValue = L"2500";
  std::optional<int> value = PolicyNumber(kZonePolicies + number, kValue);
  if (!value) value = RegistryNumber(HKEY_CURRENT_USER, kZones + number, kValue);
  return value ? std::optional(*value == 0) : std::nullopt;
}

bool HasLibrary(DWORD process) {
  const UniqueHandle modules(CreateToolhelp32Snapshot(TH32CS_SNAPMODULE, process));
  if (modules.get() == INVALID_HANDLE_VALUE) return false;
  MODULEENTRY32W module{};
  module.dwSize = sizeof module;
  for (BOOL any = Module32FirstW(modules.get(), &module); any; any = Module32NextW(modules.get(), &module)) {
    if (_wcsicmp(module.szModule, L"quillmate.dll") == 0) return true;
  }
  return false;
}

std::vector<std::string> Robots() {
  std::vector<std::string> names;
  const UniqueHandle processes(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
  PROCESSENTRY32W process{};
  process.dwSize = sizeof process;
  for (BOOL any = Process32FirstW(processes.get(), &process); any;
       any = Process32NextW(processes.get(), &process)) {
    DWORD session = 0;
    const DWORD id = process.th32ProcessID;
    if (id != GetCurrentProcessId() && ProcessIdToSessionId(id, &session) && session == OwnSession() &&
        HasLibrary(id))
      names.push_back(Utf8FromWide(process.szExeFile));
  }
  return names;
}

unsigned LanguageCodePage() {
  DWORD page = 0;
  GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, LOCALE_IDEFAULTANSICODEPAGE | LOCALE_RETURN_NUMBER,
                  reinterpret_cast<wchar_t*>(&page), sizeof page / sizeof(wchar_t));
  return page;
}

bool HasEngine() {
  std::array<wchar_t, MAX_PATH> folder{};
  GetSystemDirectoryW(folder.data(), MAX_PATH);
  std::error_code no_error;
  return std::filesystem::exists(std::filesystem::path(folder.data()) / L"mshtml.dll", no_error);
}

void ReadDesktop(Facts& facts) {
  facts.input_desktop = InputDesktop();
  facts.connected = IsConnected();
  facts.service_session = OwnSession() == 0 && facts.input_desktop.empty();
  facts.integrity = IntegrityOf(GetCurrentProcess());
  facts.browsers = Browsers();
  facts.monitors = Monitors();
  facts.hung_windows = HungWindows();
  facts.robots = Robots();
}

void ReadExplorer(Facts& facts) {
  // The value is in thousandths of a percent.
  const std::optional<int> zoom = RegistryNumber(HKEY_CURRENT_USER, kExplorer + L"\\Zoom", L"ZoomFactor");
  if (zoom) facts.zoom = *zoom / 1000;
  for (std::size_t i = 0; i < facts.protected_mode.size(); ++i)
    facts.protected_mode[i] = ProtectedMode(static_cast<int>(i) + 1);
  facts.has_engine = HasEngine();
  facts.has_browser = RegistryText(HKEY_CLASSES_ROOT, kBrowserServer, nullptr).has_value();
  facts.browser_disabled = PolicyNumber(kExplorerPolicies, L"NotifyDisableIEOptions").has_value();
}

void ReadWindows(Facts& facts) {
  const auto build = RegistryText(HKEY_LOCAL_MACHINE, kWindows, L"CurrentBuildNumber");
  facts.windows_build = build ? static_cast<int>(std::wcstol(build->c_str(), nullptr, 10)) : 0;
  const auto kind = RegistryText(HKEY_LOCAL_MACHINE, kWindows, L"InstallationType");
  facts.server = kind && kind->starts_with(L"Server");
  facts.code_page = GetACP();
  facts.language_code_page = LanguageCodePage();
}

void ReadEdge(Facts& facts) {
  facts.has_edge = HasPolicyText(kAppPaths + L"msedge.exe", nullptr);
  facts.ie_mode_level = PolicyNumber(kEdgePolicies, L"InternetExplorerIntegrationLevel");
  facts.has_site_list = HasPolicyText(kEdgePolicies, L"InternetExplorerIntegrationSiteList");
  facts.edge_comes_to_front = PolicyNumber(kEdgePolicies, L"InternetExplorerSetForegroundWhenActive") == 1;
}

}  // namespace

Facts ReadFacts() {
  Facts facts;
  ReadDesktop(facts);
  ReadExplorer(facts);
  ReadWindows(facts);
  ReadEdge(facts);
  return facts;
}

}  // namespace quillmate::player
