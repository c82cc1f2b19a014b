// quillmate-selftest.exe: the tests, the library and their pages in one program, for a machine with a real browser.
#include <windows.h>
#include <shellapi.h>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <memory>

#include "area_process.h"
#include "arguments.h"
#include "browser_windows.h"
#include "machine.h"
#include "page.h"
#include "run_areas.h"
#include "support/real_browser.h"
#include "table.h"
#include "unpacked.h"
#include "windows_text.h"

namespace quillmate::selftest {
namespace {

constexpr int kFailed = 1;
constexpr int kNothingTried = 2;

std::vector<std::string> Arguments() {
  struct LocalDeleter {
    void operator()(wchar_t** arguments) const { LocalFree(static_cast<void*>(arguments)); }
  };
  int count = 0;
  const std::unique_ptr<wchar_t*, LocalDeleter> wide(CommandLineToArgvW(GetCommandLineW(), &count));
  std::vector<std::string> arguments;
  for (int i = 1; i < count; ++i) arguments.push_back(player::Utf8FromWide(wide.get()[i]));
  return arguments;
}

void Print(const std::string& text) {
  std::fwrite(text.data(), 1, text.size(), stdout);
  std::fflush(stdout);
}

int Complain(const std::string& text) {
  std::cerr << "quillmate-selftest: " << text << "\n";
  return kNothingTried;
}

bool CanAsk() {
  DWORD mode = 0;
  return GetConsoleMode(GetStdHandle(STD_INPUT_HANDLE), &mode) != 0;
}

/// @return the answer's first letter.
char Ask(const std::string& question) {
  Print(question);
  std::string answer;
  std::getline(std::cin, answer);
  return answer.empty() ? '\0' : answer.front();
}

void AskForClosedBrowsers() {
  if (!CanAsk() || player::FindBrowserWindows().empty()) return;
  Ask("Browser windows are open. Tests that count windows fail beside them, and none of them is ever closed by the "
      "tests.\nClose them now, then press Enter. ");
}

Input AskForInput(Input wanted) {
  if (wanted != Input::kAsk) return wanted;
  if (!CanAsk()) return Input::kLeave;
  const char answer = Ask(
      "Some tests take the mouse and the keyboard for about five minutes; nobody should touch the machine then.\n"
      "May they? (y: yes, anything else: they are left out) ");
  return answer == 'y' || answer == 'Y' ? Input::kTake : Input::kLeave;
}

std::string Now() {
  SYSTEMTIME time;
  GetLocalTime(&time);
  char text[40] = "";
  std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d", time.wYear, time.wMonth, time.wDay, time.wHour,
                time.wMinute);
  return text;
}

std::string Utf8(const std::filesystem::path& path) { return player::Utf8FromWide(path.wstring()); }

void Tell(const wchar_t* name, const std::string& value) {
  SetEnvironmentVariableW(name, player::WideFromUtf8(value).c_str());
}

BOOL WINAPI OnConsoleEvent(DWORD) {
  StopRun();
  return TRUE;
}

void RunEverything(const std::vector<AreaTests>& areas, const Options& options, Run& run) {
  const UnpackFolder folder;
  const std::string dll = options.dll.empty()
                              ? Utf8(folder.Library())
                              : Utf8(std::filesystem::absolute(player::WideFromUtf8(options.dll)));
  Tell(L"QUILLMATE_UNDER_TEST", options.browser);
  Tell(L"QUILLMATE_BROWSER", options.browser);
  Tell(L"QUILLMATE_TEST_PICTURES", Utf8(folder.path()));
  SetConsoleCtrlHandler(OnConsoleEvent, TRUE);
  size_t count = 0;
  for (const AreaTests& area : areas) count += area.tests.size();
  const ULONGLONG begin = GetTickCount64();
  RunAreas(areas, options, dll, run,
           [&](const TestResult& test) { Print(ProgressLine(test, run.tests.size(), count)); });
  run.time = std::chrono::milliseconds(GetTickCount64() - begin);
}

/// Where the current folder is read-only, the temporary one has to do.
std::filesystem::path WriteReport(const Options& options, const Run& run) {
  const std::string page = PageOf(run);
  std::filesystem::path file = player::WideFromUtf8(options.report);
  for (const auto& place :
       {std::filesystem::absolute(file), std::filesystem::temp_directory_path() / file.filename()}) {
    std::ofstream stream(place, std::ios::binary);
    stream << page;
    stream.close();
    if (stream) return place;
  }
  return {};
}

int RunSelfTest(Options options) {
  if (options.browser.empty()) options.browser = FindBrowser();
  if (options.browser.empty()) return Complain("neither Internet Explorer nor Edge is on this machine");
  const std::vector<AreaTests> areas = FindTests(options.filter);
  if (areas.empty()) return Complain("no test has such a name: " + options.filter);
  AskForClosedBrowsers();
  options.input = AskForInput(options.input);
  test::SpareRunningBrowsers();
  Run run;
  run.start = Now();
  run.machine = DescribeMachine(options.browser);
  for (const Line& line : run.machine) Print(line.name + ": " + line.value + "\n");
  RunEverything(areas, options, run);
  Print(TableOf(run));
  const auto report = WriteReport(options, run);
  if (report.empty()) return Complain("the report cannot be written");
  Print("\nThe report, to send back: " + Utf8(report) + "\n");
  return CountAll(run).failed != 0 ? kFailed : 0;
}

int Start() {
  const auto options = ParseOptions(Arguments());
  if (!options) return Complain(options.error() + " (see --help)");
  if (options->help) return Print(kHelp), 0;
  if (options->list) return ListTests(options->filter);
  if (!options->area.empty()) return RunArea(*options);
  SetConsoleOutputCP(CP_UTF8);
  try {
    return RunSelfTest(*options);
  } catch (const std::exception& error) {
    return Complain(error.what());
  }
}

/// Started by a double click, the window would close with the result.
void KeepWindowOpen() {
  DWORD process = 0;
  if (CanAsk() && GetConsoleProcessList(&process, 1) == 1) Ask("\nPress Enter to close this window. ");
}

}  // namespace
}  // namespace quillmate::selftest

int main() {
  const int result = quillmate::selftest::Start();
  quillmate::selftest::KeepWindowOpen();
  return result;
}
