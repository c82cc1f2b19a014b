// What the library writes for debuggers, heard in the process itself.
#pragma once

#include <string>
#include <vector>

namespace quillmate::player {

/// From the first call on, keeps the debug output of this process, up to a limit.
/// @return the lines since the last call, in UTF-8.
std::vector<std::string> TakeDebugOutput();

}  // namespace quillmate::player
