#include "crash.h"

#include <windows.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <string>

namespace quillmate::player {
namespace {

constexpr ULONG kStackForTheHandler = 65536;  // bytes: also a stack overflow shall be told

// A handler of the system has no place for an argument, so these stand alone; they are made before any crash.
TextSink* error_stream = nullptr;
std::string where;

[[noreturn]] void Tell(std::string_view what) {
  error_stream->Write(where);
  error_stream->Write(what);
  // Nothing of the crashed library is run again.
  TerminateProcess(GetCurrentProcess(), 1);
  std::abort();
}

LONG WINAPI OnException(EXCEPTION_POINTERS* exception) {
  std::array<char, 64> text{};
  const int length = std::snprintf(text.data(), text.size(), "the library crashed (exception 0x%08lX)\n",
                                   exception->ExceptionRecord->ExceptionCode);
  Tell({text.data(), static_cast<std::size_t>(length)});
}

void OnAbort(int) { Tell("the library ended the process\n"); }

}  // namespace

CrashReporter::CrashReporter(TextSink& errors) {
  error_stream = &errors;
  where = "quillmate-play: ";
  ULONG bytes = kStackForTheHandler;
  SetThreadStackGuarantee(&bytes);
  SetUnhandledExceptionFilter(OnException);
  std::signal(SIGABRT, OnAbort);
}

void CrashReporter::Started(const Step& step, const Summary&) {
  where = "quillmate-play: line " + std::to_string(step.line) + ": " + step.command + ": ";
}

void CrashReporter::Finished(const Outcome&, const Summary&) {
  where = "quillmate-play: after the last step: ";
}

}  // namespace quillmate::player
