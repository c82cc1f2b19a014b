#include "child.h"

#include <stdexcept>

#include "com/encoding.h"

namespace quillmate::selftest {
namespace {

constexpr DWORD kEndMs = 10'000;
constexpr DWORD kLookMs = 20;

std::wstring CommandLine(const std::vector<std::string>& arguments) {
  wchar_t program[MAX_PATH] = L"";
  GetModuleFileNameW(nullptr, program, MAX_PATH);
  std::wstring command = L'"' + std::wstring(program) + L'"';
  // None of them holds a quotation mark: file names cannot, and neither can names of tests.
  for (const std::string& argument : arguments) command += L" \"" + com::FromUtf8(argument) + L'"';
  return command;
}

}  // namespace

Child::Child(const std::vector<std::string>& arguments) {
  HANDLE read = nullptr;
  HANDLE write = nullptr;
  SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
  if (!CreatePipe(&read, &write, &inherited, 0)) throw std::runtime_error("no pipe");
  output_.reset(read);
  const com::UniqueHandle end(write);
  SetHandleInformation(read, HANDLE_FLAG_INHERIT, 0);
  STARTUPINFOW startup = {};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdOutput = write;
  PROCESS_INFORMATION started = {};
  std::wstring command = CommandLine(arguments);
  if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                      &started))
    throw std::runtime_error("the program cannot be started again");
  CloseHandle(started.hThread);
  process_.reset(started.hProcess);
  reader_ = std::thread([this] { Read(); });
}

Child::~Child() {
  TerminateProcess(process_.get(), 1);
  WaitForSingleObject(process_.get(), kEndMs);
  reader_.join();
}

// To the end of the process, not of the pipe: some systems hand it on to the browser that the process starts.
void Child::Read() {
  std::string text;
  for (bool last_look = false;;) {
    DWORD waiting = 0;
    PeekNamedPipe(output_.get(), nullptr, 0, nullptr, &waiting, nullptr);
    if (waiting > 0) {
      Take(text, waiting);
    } else if (last_look) {
      break;
    } else {
      last_look = WaitForSingleObject(process_.get(), kLookMs) == WAIT_OBJECT_0;
    }
  }
  const std::lock_guard lock(mutex_);
  at_end_ = true;
  changed_.notify_one();
}

void Child::Take(std::string& text, DWORD length) {
  std::string part(length, '\0');
  ReadFile(output_.get(), part.data(), length, &length, nullptr);
  text.append(part, 0, length);
  const std::lock_guard lock(mutex_);
  for (size_t end; (end = text.find('\n')) != std::string::npos; text.erase(0, end + 1)) {
    lines_.push_back(text.substr(0, end));
    if (lines_.back().ends_with('\r')) lines_.back().pop_back();
  }
  changed_.notify_one();
}

Child::State Child::Next(std::string& line, std::chrono::milliseconds limit) {
  std::unique_lock lock(mutex_);
  if (!changed_.wait_for(lock, limit, [this] { return at_end_ || !lines_.empty(); })) return State::kTimeOut;
  if (lines_.empty()) return State::kEnd;
  line = std::move(lines_.front());
  lines_.pop_front();
  return State::kLine;
}

DWORD Child::ExitCode() {
  DWORD code = 0;
  WaitForSingleObject(process_.get(), kEndMs);
  GetExitCodeProcess(process_.get(), &code);
  return code;
}

}  // namespace quillmate::selftest
