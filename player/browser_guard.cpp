#include "browser_guard.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <map>
#include <sstream>
#include <string>

#include "browser_windows.h"
#include "output.h"

namespace quillmate::player {
namespace {

constexpr std::chrono::milliseconds kForClosing{5000};  // before a process is ended
constexpr std::chrono::milliseconds kLook{100};
constexpr DWORD kForTheGuard = 15'000;  // milliseconds

std::wstring CommandLine() {
  std::array<wchar_t, 32768> path{};  // the longest path there is
  GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
  return L"\"" + std::wstring(path.data()) + L"\" --guard-browsers";
}

UniqueHandle OpenNul() {
  SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
  return UniqueHandle(CreateFileW(L"NUL", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                  &inherited, OPEN_EXISTING, 0, nullptr));
}

UniqueHandle StartWithInput(HANDLE input) {
  const UniqueHandle nul = OpenNul();
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdInput = input;
  startup.hStdOutput = nul.get();
  startup.hStdError = nul.get();
  PROCESS_INFORMATION process{};
  std::wstring line = CommandLine();
  // A job that ends its processes with the server's would end the guard before it has done anything.
  for (const DWORD flags : {CREATE_NO_WINDOW | CREATE_BREAKAWAY_FROM_JOB, CREATE_NO_WINDOW}) {
    if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, flags, nullptr, nullptr, &startup,
                        &process))
      continue;
    CloseHandle(process.hThread);
    return UniqueHandle(process.hProcess);
  }
  return nullptr;
}

// What the guard has been told of. The open handle of a process keeps its number from being given again.
class Guarded {
 public:
  explicit Guarded(const std::string& told) {
    std::istringstream lines(told);
    std::string kind;
    std::uint64_t handle = 0;
    std::uint32_t process = 0;
    while (lines >> kind >> handle >> process) {
      if (kind == "window") windows_.push_back({handle, process});
      if (kind == "process") Add(process);
    }
  }

  /// @return the windows that are still to be closed.
  std::vector<BrowserWindow> Left() const {
    std::vector<BrowserWindow> left;
    for (const BrowserWindow& window : FindBrowserWindows()) {
      if (processes_.contains(window.process) || std::ranges::find(windows_, window) != windows_.end())
        left.push_back(window);
    }
    return left;
  }

  void EndProcesses() const {
    for (const auto& [id, process] : processes_) TerminateProcess(process.get(), 0);
  }

 private:
  void Add(std::uint32_t id) {
    UniqueHandle process(OpenProcess(PROCESS_TERMINATE | SYNCHRONIZE, FALSE, id));
    if (process) processes_.emplace(id, std::move(process));
  }

  std::vector<BrowserWindow> windows_;
  std::map<std::uint32_t, UniqueHandle> processes_;
};

void Close(const Guarded& guarded) {
  const auto end = std::chrono::steady_clock::now() + kForClosing;
  for (std::vector<BrowserWindow> left; !(left = guarded.Left()).empty();) {
    // Again and again: a browser that asks something when it is closed hears it once that is answered.
    for (const BrowserWindow& window : left) PostMessageW(HandleOf(window), WM_CLOSE, 0, 0);
    if (std::chrono::steady_clock::now() > end) return guarded.EndProcesses();
    Sleep(static_cast<DWORD>(kLook.count()));
  }
}

}  // namespace

std::unique_ptr<BrowserGuard> BrowserGuard::Start() {
  HANDLE read_end = nullptr;
  HANDLE write_end = nullptr;
  if (!CreatePipe(&read_end, &write_end, nullptr, 0)) return nullptr;
  const UniqueHandle input(read_end);
  UniqueHandle pipe(write_end);
  SetHandleInformation(read_end, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
  UniqueHandle process = StartWithInput(read_end);
  if (!process) return nullptr;
  return std::unique_ptr<BrowserGuard>(new BrowserGuard(std::move(pipe), std::move(process)));
}

BrowserGuard::BrowserGuard(UniqueHandle pipe, UniqueHandle process)
    : opened_(FindBrowserWindows()), pipe_(std::move(pipe)), process_(std::move(process)) {}

BrowserGuard::~BrowserGuard() {
  AfterCommand("", false);  // what has come up since
  pipe_.reset();
  WaitForSingleObject(process_.get(), kForTheGuard);
}

void BrowserGuard::AfterCommand(std::string_view command, bool returned) {
  const OpenedBrowsers::News news = opened_.After(command, returned, FindBrowserWindows());
  std::string text;
  for (const BrowserWindow& window : news.windows)
    text += "window " + std::to_string(window.handle) + " " + std::to_string(window.process) + "\n";
  for (const std::uint32_t process : news.processes) text += "process 0 " + std::to_string(process) + "\n";
  DWORD written = 0;
  if (!text.empty()) WriteFile(pipe_.get(), text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
}

int GuardBrowsers() {
  Close(Guarded(ReadStandardInput()));
  return 0;
}

}  // namespace quillmate::player
