// Plays a script from the command line.
#pragma once

#include "options.h"
#include "output.h"

namespace quillmate::player {

enum ExitCode { kAllAsExpected = 0, kStepFailed = 1, kWrongCall = 2 };

/// @return the process' exit code.
int PlayScript(const Options& options, StandardStream& out, StandardStream& errors);

}  // namespace quillmate::player
