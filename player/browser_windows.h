// The desktop's browser windows.
#pragma once

#include <windows.h>

#include <vector>

#include "opened_browsers.h"

namespace quillmate::player {

HWND HandleOf(const BrowserWindow& window);

/// @return every top-level window of a browser or of one of its page dialogs. Asks no other process anything.
std::vector<BrowserWindow> FindBrowserWindows();

}  // namespace quillmate::player
