// The desktop's browser windows.
#pragma once

#include <vector>

#include "opened_browsers.h"

namespace quillmate::player {

/// @return every top-level window of a browser or of one of its page dialogs. Asks no other process anything.
std::vector<BrowserWindow> FindBrowserWindows();

}  // namespace quillmate::player
