// Window messages as the engine's input.
#pragma once

#include <windows.h>
#include <optional>
#include <vector>

#include "engine/input_event.h"

namespace testbrowser::shell {

/// A WM_MOUSEMOVE, button or double-click message; nothing for any other.
std::optional<engine::MouseInput> ToMouseInput(UINT message, WPARAM wparam, LPARAM lparam);
/// Where the pointer was, in the window's client pixels, between the mouse message of that time and the WM_MOUSEMOVE
/// being handled, oldest first: the system merges the moves that nobody has fetched.
std::vector<POINT> MergedMoves(HWND window, DWORD since);
/// A WM_MOUSEWHEEL or WM_MOUSEHWHEEL message that came to `window`.
engine::WheelInput ToWheelInput(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
/// A WM_(SYS)KEYDOWN or WM_(SYS)KEYUP message. A press takes the character messages that TranslateMessage
/// queued for it out of the window's queue: they are its text, or nothing while Ctrl or Alt is held.
engine::KeyInput ToKeyInput(HWND window, UINT message, WPARAM wparam, LPARAM lparam);

}  // namespace testbrowser::shell
