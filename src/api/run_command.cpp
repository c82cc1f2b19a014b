// See run_command.h.
#include "api/run_command.h"

#include <mutex>

#include "api/envelope.h"
#include "api/parameter_text.h"
#include "com/command_scope.h"

namespace quillmate::api {
namespace {

// Longer than any call to a browser that works takes; a dialog of the page does not hold up calls.
constexpr std::chrono::seconds kCallLimit(5);

std::recursive_mutex command_lock;
bool command_is_running = false;
ResultBuffers result_buffers;

struct RunningFlag {
  RunningFlag() { command_is_running = true; }
  ~RunningFlag() { command_is_running = false; }
  RunningFlag(const RunningFlag&) = delete;
  RunningFlag& operator=(const RunningFlag&) = delete;
};

Result Run(const Command& command, const char* utf8) {
  if (command_is_running) return Fail(command.failure_message);
  const RunningFlag running;
  try {
    const com::CommandScope com(kCallLimit);
    return command.function(CommandParams(command.reads_parameters ? ToCommandParams(utf8) : std::string()));
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

}  // namespace quillmate::api
