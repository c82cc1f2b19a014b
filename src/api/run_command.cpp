#include "api/run_command.h"

#include <windows.h>
#include <objbase.h>
#include <chrono>
#include <string>

#include "api/command_params.h"
#include "api/result.h"
#include "com/agile.h"
#include "com/call_limit.h"
#include "com/process.h"
#include "session/session.h"

namespace quillmate {
namespace {

// What is global, all of it:
// - Here: the session and the result buffers, which outlive a command, and the flag that guards them. The
//   session is passed to every command; no other function looks it up.
// - com/process.cpp: the lock under which commands take turns.
// - com/worker.cpp: the token of the call being waited for. A worker outlives its command and therefore the
//   session's reach.
// - input/synthesized_input.cpp: when the library last pressed the left button. The system has one pointer.
// - Once per thread: the apartment of a host's thread (below) and its own pointers to the session's objects
//   (com/agile.cpp).
// - com/call_limit.cpp: the thread that cancels calls which last too long, and whom it watches.
// - Loaded once and kept: the MSHTML type library (session/browser_objects.cpp), the table of objects for all
//   threads (com/agile.cpp), GDI+ (capture/picture.cpp) and the compiled patterns (api/validation.cpp).
bool command_is_running = false;
ResultBuffers result_buffers;
com::NoDestructor<Session> session;

// Longer than any call to a browser that works takes; a dialog of the page does not hold up calls.
constexpr std::chrono::seconds kCallLimit(5);

/// A conversion counts its terminator, and returns 0 when it fails.
bool IsConvertible(int count) {
  constexpr int kMaxCount = 0x7FFF8;
  return count > 0 && count <= kMaxCount;
}

std::wstring ToWide(const char* utf8, int units) {
  std::wstring wide(static_cast<size_t>(units), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, utf8, -1, wide.data(), units);
  return wide;
}

char AsciiInCodePage(char32_t character) {
  if (character > 0xFFFF) return 0;
  const wchar_t unit = static_cast<wchar_t>(character);
  char bytes[8] = "";
  const int length = WideCharToMultiByte(CP_ACP, 0, &unit, 1, bytes, sizeof bytes, nullptr, nullptr);
  return length == 1 && static_cast<unsigned char>(bytes[0]) < 0x80 ? bytes[0] : '\0';
}

/// In some code pages a backslash is also the second byte of characters. There the parser must read it as one
/// byte and not as the begin of an escape.
std::string EscapeSecondBytes(std::string_view ansi) {
  std::string escaped;
  escaped.reserve(ansi.size());
  for (size_t i = 0; i < ansi.size(); ++i) {
    escaped += ansi[i];
    if (!IsDBCSLeadByte(static_cast<BYTE>(ansi[i])) || i + 1 == ansi.size()) continue;
    escaped += ansi[++i];
    if (ansi[i] == '\\') escaped += '\\';
  }
  return escaped;
}

/// Converts UTF-8 to the ANSI code page; characters that it cannot hold become its default character. A
/// \u escape beyond ASCII means the same as its character.
/// @return the empty text for a null pointer, for invalid UTF-8, and for text of 524,280 units or more.
std::string ToCommandParams(const char* utf8) {
  if (utf8 == nullptr) return {};
  if (!IsConvertible(MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, utf8, -1, nullptr, 0))) return {};
  const std::string decoded = DecodeUnicodeEscapes(utf8, AsciiInCodePage);
  const int units = MultiByteToWideChar(CP_UTF8, 0, decoded.c_str(), -1, nullptr, 0);
  const std::wstring wide = ToWide(decoded.c_str(), units);
  const int bytes = WideCharToMultiByte(CP_ACP, 0, wide.c_str(), -1, nullptr, 0, nullptr, nullptr);
  if (!IsConvertible(bytes)) return {};
  std::string ansi(static_cast<size_t>(bytes), '\0');
  WideCharToMultiByte(CP_ACP, 0, wide.c_str(), -1, ansi.data(), bytes, nullptr, nullptr);
  ansi.pop_back();
  return EscapeSecondBytes(ansi);
}

struct RunningFlag {
  RunningFlag() { command_is_running = true; }
  ~RunningFlag() { command_is_running = false; }
  RunningFlag(const RunningFlag&) = delete;
  RunningFlag& operator=(const RunningFlag&) = delete;
};

/// Puts the host's thread into a single-threaded apartment, and leaves it there for its next commands. A
/// thread of a multi-threaded apartment stays there. Asked anew for each command: the host may have left the
/// apartment meanwhile.
void EnterApartment() {
  APTTYPE type = APTTYPE_CURRENT;
  APTTYPEQUALIFIER qualifier = APTTYPEQUALIFIER_NONE;
  const bool has_apartment = SUCCEEDED(CoGetApartmentType(&type, &qualifier));
  // The implicit apartment of a thread that never entered one counts as none. Deliberate: never balanced.
  if (!has_apartment || qualifier == APTTYPEQUALIFIER_IMPLICIT_MTA) CoInitialize(nullptr);
}

Result Run(const Command& command, const char* utf8) {
  if (command_is_running) return Fail(command.failure_message);
  const RunningFlag running;
  try {
    EnterApartment();
    const com::CallLimit limit(kCallLimit);
    const com::ThreadObjectsScope objects;
    const CommandParams params(command.reads_parameters ? ToCommandParams(utf8) : std::string());
    return command.function(*session, params);
  } catch (...) {
    return Fail(command.failure_message);
  }
}

}  // namespace

const char* RunCommand(const Command& command, const char* utf8) noexcept {
  const com::CommandLock lock;
  try {
    return result_buffers.Store(Run(command, utf8));
  } catch (...) {
    return nullptr;  // not even the failure could be made
  }
}

}  // namespace quillmate
