// The frame around every command: the one place that owns the session, locks, converts, catches and prints.
#pragma once

#include "api/command_params.h"
#include "api/result.h"

namespace quillmate {

class Session;

struct Command {
  Result (*function)(Session&, const CommandParams&);
  /// The message of a command that throws.
  const char* failure_message;
  /// A command without parameters never looks at the host's text.
  bool reads_parameters;
};

/// Runs one command. Commands of several threads run one after the other; a thread that waits for its turn
/// goes on serving messages that are sent to its windows.
/// A command issued while another runs on the same thread, from a message that COM lets in, fails with its
/// own message: the session that the first one works on must not change under it.
/// @param utf8 the host's parameter text.
/// @return the envelope, owned by the library; null when there is no memory for it. Never throws.
const char* RunCommand(const Command& command, const char* utf8) noexcept;

}  // namespace quillmate
