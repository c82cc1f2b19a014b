// The server's process: standard streams, the library, pictures and browsers around a Server.
#pragma once

#include "options.h"
#include "output.h"

namespace quillmate::player {

/// @return the process' exit code.
int ServeRequests(const Options& options, StandardStream& out, StandardStream& errors);

}  // namespace quillmate::player
