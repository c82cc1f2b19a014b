// Every command's function, declared from the command list. What a command takes, returns and fails with is
// said in include/quillmate.h.
#pragma once

#include "api/command_params.h"
#include "api/result.h"

namespace quillmate {

class Session;

#define QUILLMATE_COMMAND(name, function, failure, ...) Result function(Session&, const CommandParams&);
#define QUILLMATE_SAME_COMMAND(name, same, ...)
#include "command_list.inc"
#undef QUILLMATE_COMMAND
#undef QUILLMATE_SAME_COMMAND

}  // namespace quillmate
