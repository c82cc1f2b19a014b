#include "crash.h"

#include <windows.h>

#include <array>
#include <csignal>
#include <cstdio>

namespace quillmate::player {
namespace {

constexpr ULONG kStackForTheHandler = 65536;  // bytes

// A system handler takes no argument of ours, so these are global; they are made before any crash.
TextSink* crash_sink = nullptr;
std::string text_before, text_after;

[[noreturn]] void Tell(std::string_view what) {
  crash_sink->Write(text_before);
  crash_sink->Write(what);
  crash_sink->Write(text_after);
  // Nothing of the crashed library is run again.
  TerminateProcess(GetCurrentProcess(), 1);
  std::abort();
}

LONG WINAPI OnException(EXCEPTION_POINTERS* exception) {
  std::array<char, 64> text{};
  const int length = std::snprintf(text.data(), text.size(), "the library crashed (exception 0x%08lX)",
                                   exception->ExceptionRecord->ExceptionCode);
  Tell({text.data(), static_cast<std::size_t>(length)});
}

void OnAbort(int) { Tell("the library ended the process"); }

}  // namespace

void ReportCrashesTo(TextSink& sink) {
  crash_sink = &sink;
  KeepStackForCrashes();
  SetUnhandledExceptionFilter(OnException);
  std::signal(SIGABRT, OnAbort);
}

void SetCrashMessage(std::string before, std::string after) {
  text_before = std::move(before);
  text_after = std::move(after);
}

void KeepStackForCrashes() {
  ULONG bytes = kStackForTheHandler;
  SetThreadStackGuarantee(&bytes);
}

CrashReporter::CrashReporter(TextSink& errors, bool below_live_line)
    : start_(below_live_line ? "\r\nquillmate-play: " : "quillmate-play: ") {
  ReportCrashesTo(errors);
  SetCrashMessage(start_, "\n");
}

void CrashReporter::Started(const Step& step, const Summary&) {
  SetCrashMessage(start_ + "line " + std::to_string(step.line) + ": " + step.command + ": ", "\n");
}

void CrashReporter::Finished(const Outcome& outcome, const Summary&) {
  SetCrashMessage(start_ + "after line " + std::to_string(outcome.step->line) + ": ", "\n");
}

}  // namespace quillmate::player
