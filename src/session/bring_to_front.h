// Brings a window before all others, also when another process has the foreground.
#pragma once

#include <windows.h>

namespace quillmate::session {

/// Shows, restores and maximises a window and makes it the foreground window with the keyboard focus.
/// @param window the top-level window.
/// @return false, and nothing is touched, when the window does not answer within a second or there is none;
/// the steps' own results are not looked at.
bool BringWindowToFront(HWND window);

}  // namespace quillmate::session
