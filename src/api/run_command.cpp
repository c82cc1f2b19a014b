#include "api/run_command.h"

#include <windows.h>
#include <objbase.h>
#include <chrono>
#include <string>

#include "api/envelope.h"
#include "api/parameter_text.h"
#include "com/call_limit.h"
#include "com/command_lock.h"
#include "com/no_destructor.h"
#include "com/thread_objects.h"
#include "session/session.h"

namespace quillmate {
namespace {

// What is global, all of it:
// - Here: the session and the result buffers, which outlive a command, and the flag that guards them. The
//   session is passed to every command; no other function looks it up.
// - com/command_lock.cpp: the lock under which commands take turns.
// - com/worker.cpp: the token of the call being waited for. A worker outlives its command and therefore the
//   session's reach.
// - input/pointer.cpp: when the library last pressed the left button. The system has one pointer.
// - Once per thread: the apartment of a host's thread (below) and its own pointers to the session's objects
//   (com/thread_objects.cpp).
// - com/call_canceller.cpp: the thread that cancels calls which last too long, and whom it watches.
// - Loaded once and kept: the MSHTML type library (session/browser_objects.cpp), the table of objects for all
//   threads (com/agile.cpp), GDI+ (capture/picture.cpp) and the compiled patterns (api/patterns.cpp).
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
