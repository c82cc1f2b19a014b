// Brings a window before all others, also when another process has the foreground.
#pragma once

#include <windows.h>

namespace quillmate::session {

/// Shows, restores and maximises a window and makes it the foreground window with the keyboard focus.
/// @param window the top-level window; with none the same calls are made and do nothing.
void BringWindowToFront(HWND window);

}  // namespace quillmate::session
