// Starts Chromium, a Linux program, from this Windows program.
#pragma once

#include "engine/loopback_socket.h"

namespace testbrowser::engine {

/// Starts Chromium with a fresh profile, speaking DevTools messages over the socket. There is no process
/// handle to keep: it ends, and its profile is removed, when the other end of the socket is closed, also by
/// our sudden death.
/// @return false when no process could be started.
bool StartChromium(UniqueSocket devtools);

}  // namespace testbrowser::engine
