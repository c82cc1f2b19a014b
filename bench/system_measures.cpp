#include <windows.h>
#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <vector>

#include "com/owned.h"
#include "measures.h"
#include "report.h"

namespace quillmate::bench {
namespace {

std::wstring OwnPath() {
  wchar_t path[MAX_PATH] = L"";
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  return path;
}

/// A copy of this program with other arguments. It ends with this object.
class Child {
 public:
  explicit Child(const std::wstring& arguments) {
    std::wstring command = L'"' + OwnPath() + L"\" " + arguments;
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started = {};
    if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                        &started)) {
      throw std::runtime_error("the bench cannot start itself");
    }
    CloseHandle(started.hThread);
    process_.reset(started.hProcess);
  }
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;
  ~Child() {
    TerminateProcess(process_.get(), 0);
    WaitForSingleObject(process_.get(), 5000);
  }

  DWORD ExitCode() const {
    DWORD code = 0;
    WaitForSingleObject(process_.get(), 60'000);
    GetExitCodeProcess(process_.get(), &code);
    return code;
  }

 private:
  com::UniqueHandle process_;
};

constexpr wchar_t kForeignClass[] = L"QuillmateBenchForeign";

int CountForeignWindows() {
  int count = 0;
  for (HWND window = nullptr; (window = FindWindowExW(nullptr, window, kForeignClass, nullptr)) != nullptr;)
    ++count;
  return count;
}

double RateOf(const char* command, const std::string& text) {
  constexpr int kCalls = 20'000;
  const double milliseconds = TimeOf([&] {
    for (int i = 0; i < kCalls; ++i) test::CallRaw(command, text.c_str());
  });
  return kCalls / milliseconds * 1000;
}

double TimeOfSearch() {
  return TimeOf([] { Demand("selectwindowuntop", {{"target", "title=Quillmate bench"}}); });
}

double TimeOfSearchAmong(int count) {
  const Child windows(L"--windows " + std::to_wstring(count));
  while (CountForeignWindows() < count) Sleep(20);
  double shortest = TimeOfSearch();
  for (int round = 0; round < 9; ++round) shortest = std::min(shortest, TimeOfSearch());
  return shortest;
}

}  // namespace

void MeasureChecks() {
  PrintMeasure("failing checks a second", RateOf("click", R"({"target": "nonsense"})"), Wanted::kAtLeast,
               50'000);
  const std::string full = R"({"target": "id=)" + std::string(65'600, 'x') + R"("})";
  PrintMeasure("failing checks a second, 65,600 bytes", RateOf("click", full), Wanted::kAtLeast, 5'000);
}

void MeasureDiscovery() {
  // What is found shows the title of the desk's first page.
  constexpr int kCounts[] = {10, 100, 500};
  std::vector<double> times;
  for (const int count : kCounts) {
    times.push_back(TimeOfSearchAmong(count));
    PrintPoint("windows", "quillmate", count, times.back());
  }
  const double cost = (times[2] - times[1]) / (kCounts[2] - kCounts[1]);
  const double early_cost = (times[1] - times[0]) / (kCounts[1] - kCounts[0]);
  PrintFigure("window discovery, ms a foreign window", cost);
  PrintMeasure("window discovery, cost a window: late / early", cost / early_cost, Wanted::kAtMost, 1.5);
}

void MeasureLibrary() {
  const Child child(L"--load");
  PrintFigure("loading the library, ms", child.ExitCode() / 1000.0);
  const auto library = std::filesystem::path(OwnPath()).replace_filename(L"quillmate.dll");
  PrintFigure("size of the library, bytes", static_cast<double>(std::filesystem::file_size(library)));
}

void ShowForeignWindows(int count) {
  WNDCLASSW window_class = {};
  window_class.lpfnWndProc = DefWindowProcW;
  window_class.lpszClassName = kForeignClass;
  RegisterClassW(&window_class);
  for (int i = 0; i < count; ++i) {
    CreateWindowW(kForeignClass, L"foreign", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
  }
  MSG message;
  while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
}

int TimeLoading() {
  return static_cast<int>(1000 * TimeOf([] { LoadLibraryW(L"quillmate.dll"); }));
}

}  // namespace quillmate::bench
