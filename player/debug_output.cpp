#include "debug_output.h"

#include <windows.h>

#include <mutex>

#include "windows_text.h"

namespace quillmate::player {
namespace {

constexpr std::size_t kMostKept = 65536;  // bytes
constexpr ULONG_PTR kParameters = 2;      // of the exception: length and text, in the ANSI code page

std::mutex mutex;
std::string output;

// OutputDebugString raises an exception that a debugger, or else a handler like this one, is asked about
// first.
LONG CALLBACK OnException(EXCEPTION_POINTERS* exception) {
  const EXCEPTION_RECORD& record = *exception->ExceptionRecord;
  if (record.ExceptionCode != DBG_PRINTEXCEPTION_C || record.NumberParameters < kParameters)
    return EXCEPTION_CONTINUE_SEARCH;
  const auto* const text = reinterpret_cast<const char*>(record.ExceptionInformation[1]);
  const std::scoped_lock lock(mutex);
  if (output.size() < kMostKept) output += text;
  return EXCEPTION_CONTINUE_SEARCH;
}

std::vector<std::string> SplitLines(std::string_view text) {
  std::vector<std::string> lines;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (!line.empty()) lines.emplace_back(line);
  }
  return lines;
}

}  // namespace

std::vector<std::string> TakeDebugOutput() {
  static const PVOID handler = AddVectoredExceptionHandler(1, OnException);
  if (handler == nullptr) return {};
  std::string taken;
  {
    const std::scoped_lock lock(mutex);
    taken.swap(output);
  }
  return SplitLines(Utf8FromAnsi(taken));
}

}  // namespace quillmate::player
