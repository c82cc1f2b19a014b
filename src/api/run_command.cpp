#include "api/run_command.h"

#include <windows.h>
#include <objbase.h>
#include <chrono>
#include <mutex>
#include <string>

#include "api/envelope.h"
#include "com/call_limit.h"
#include "com/no_destructor.h"
#include "session/session.h"

namespace quillmate {
namespace {

// What is global, all of it:
// - Here: the session and the result buffers, which outlive a command, and the lock and flag that guard them.
//   The session is passed to every command; no other function looks it up.
// - com/worker.cpp: the token of the call being waited for, and the objects of calls that were given up. A
//   worker outlives its command and therefore the session's reach.
// - input/pointer.cpp: when the library last pressed the left button. The system has one pointer.
// - Once per thread: the apartment of a host's thread (below).
// - Loaded once and kept: the MSHTML type library (session/browser_objects.cpp), GDI+ (capture/picture.cpp) and
//   the compiled patterns (api/patterns.cpp).
std::recursive_mutex command_lock;
bool command_is_running = false;
ResultBuffers result_buffers;
com::NoDestructor<Session> session;

// Longer than any call to a browser that works takes; a dialog of the page does not hold up calls.
constexpr std::chrono::seconds kCallLimit(5);

struct RunningFlag {
  RunningFlag() { command_is_running = true; }
  ~RunningFlag() { command_is_running = false; }
  RunningFlag(const RunningFlag&) = delete;
  RunningFlag& operator=(const RunningFlag&) = delete;
};

/// Puts the host's thread into a single-threaded apartment, for good: the selected surface and remembered
/// elements belong to it. A thread of a multi-threaded apartment stays there.
void EnterApartment() {
  // Deliberate: once a thread, never balanced.
  static thread_local const HRESULT entered = CoInitialize(nullptr);
  static_cast<void>(entered);
}

/// Whether a conversion worked and its text is not too long. It counts the terminator, and returns 0 when it
/// fails.
bool IsConvertible(int count) {
  constexpr int kMaxCount = 0x7FFF8;
  return count > 0 && count <= kMaxCount;
}

/// Converts UTF-8 to the ANSI code page; characters that it cannot hold become its default character.
/// @return the empty text for a null pointer, for invalid UTF-8, and for text of 524,280 units or more.
std::string ToCommandParams(const char* utf8) {
  if (utf8 == nullptr) return {};
  const int units = MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, utf8, -1, nullptr, 0);
  if (!IsConvertible(units)) return {};
  std::wstring wide(static_cast<size_t>(units), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, utf8, -1, wide.data(), units);
  const int bytes = WideCharToMultiByte(CP_ACP, 0, wide.c_str(), -1, nullptr, 0, nullptr, nullptr);
  if (!IsConvertible(bytes)) return {};
  std::string ansi(static_cast<size_t>(bytes), '\0');
  WideCharToMultiByte(CP_ACP, 0, wide.c_str(), -1, ansi.data(), bytes, nullptr, nullptr);
  ansi.pop_back();
  return ansi;
}

Result Run(const Command& command, const char* utf8) {
  if (command_is_running) return Fail(command.failure_message);
  const RunningFlag running;
  try {
    EnterApartment();
    const com::CallLimit limit(kCallLimit);
    const CommandParams params(command.reads_parameters ? ToCommandParams(utf8) : std::string());
    return command.function(*session, params);
  } catch (...) {
    return Fail(command.failure_message);
  }
}

}  // namespace

const char* RunCommand(const Command& command, const char* utf8) noexcept {
  const std::lock_guard lock(command_lock);
  try {
    return result_buffers.Store(Run(command, utf8));
  } catch (...) {
    return nullptr;  // not even the failure could be made
  }
}

}  // namespace quillmate
