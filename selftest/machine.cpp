#include "machine.h"

#include <windows.h>
#include <vector>

#include "doctor.h"
#include "machine_facts.h"
#include "quillmate.h"
#include "registry.h"
#include "windows_text.h"

namespace quillmate::selftest {
namespace {

const std::wstring kWindows = L"Software\\Microsoft\\Windows NT\\CurrentVersion";

std::string RegistryLine(const std::wstring& key, const wchar_t* name) {
  return player::Utf8FromWide(player::RegistryText(HKEY_LOCAL_MACHINE, key, name).value_or(L""));
}

std::string VersionOfFile(const std::wstring& file) {
  DWORD ignored = 0;
  std::vector<char> block(GetFileVersionInfoSizeW(file.c_str(), &ignored));
  VS_FIXEDFILEINFO* info = nullptr;
  UINT length = 0;
  if (block.empty() ||
      !GetFileVersionInfoW(file.c_str(), 0, static_cast<DWORD>(block.size()), block.data()) ||
      !VerQueryValueW(block.data(), L"\\", reinterpret_cast<void**>(&info), &length))
    return {};
  return std::to_string(HIWORD(info->dwFileVersionMS)) + "." + std::to_string(LOWORD(info->dwFileVersionMS)) +
         "." + std::to_string(HIWORD(info->dwFileVersionLS)) + "." +
         std::to_string(LOWORD(info->dwFileVersionLS));
}

std::string WindowsText() {
  const auto revision = player::RegistryNumber(HKEY_LOCAL_MACHINE, kWindows, L"UBR");
  return RegistryLine(kWindows, L"ProductName") + " " + RegistryLine(kWindows, L"DisplayVersion") +
         ", build " + RegistryLine(kWindows, L"CurrentBuildNumber") +
         (revision ? "." + std::to_string(*revision) : "");
}

std::string EngineText() {
  const std::string version = RegistryLine(L"Software\\Microsoft\\Internet Explorer", L"svcVersion");
  wchar_t folder[MAX_PATH] = L"";
  GetSystemDirectoryW(folder, MAX_PATH);
  return (version.empty() ? "version not known" : version) + ", mshtml.dll " +
         VersionOfFile(std::wstring(folder) + L"\\mshtml.dll");
}

std::string EdgeText() {
  const auto program = player::RegistryText(
      HKEY_LOCAL_MACHINE, L"Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\msedge.exe", nullptr);
  return program ? VersionOfFile(*program) : "not here";
}

std::string ScreenText(const player::Facts& facts) {
  std::string text =
      std::to_string(GetSystemMetrics(SM_CXSCREEN)) + " x " + std::to_string(GetSystemMetrics(SM_CYSCREEN));
  for (const player::MonitorFact& monitor : facts.monitors)
    text += ", monitor " + std::to_string(monitor.number) + " at " + std::to_string(monitor.dpi * 100 / 96) +
            " %";
  return text;
}

/// What the user's windows show is not for a report.
player::Facts WithoutTitles(player::Facts facts) {
  for (player::BrowserFact& browser : facts.browsers) browser.title = "(title left out)";
  for (std::string& title : facts.hung_windows) title = "(title left out)";
  return facts;
}

}  // namespace

std::string FindBrowser() {
  const player::Facts facts = player::ReadFacts();
  if (facts.has_browser && !facts.browser_disabled) return "ie";
  return facts.has_edge && facts.has_engine ? "edge" : "";
}

std::vector<Line> DescribeMachine(const std::string& browser) {
  const player::Facts facts = player::ReadFacts();
  std::vector<Line> lines = {
      {"Quillmate", QUILLMATE_VERSION},
      {"Tried with", browser == "edge" ? "Edge in Internet Explorer mode" : "Internet Explorer"},
      {"Windows", WindowsText()},
      {"Internet Explorer", EngineText()},
      {"Edge", EdgeText()},
      {"Code page", std::to_string(facts.code_page)},
      {"Screen", ScreenText(facts)},
      {"Browsers open", std::to_string(facts.browsers.size()) + " before the first test"}};
  for (const player::Finding& finding : player::Examine(WithoutTitles(facts))) {
    if (finding.health != player::Health::kOk) lines.push_back({"Remark", finding.message});
  }
  return lines;
}

}  // namespace quillmate::selftest
