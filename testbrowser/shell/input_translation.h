// Window messages as the engine's input.
#pragma once

#include <windows.h>
#include <optional>

#include "engine/input_event.h"

namespace testbrowser::shell {

/// A WM_MOUSEMOVE, button or double-click message; nothing for any other.
std::optional<engine::MouseInput> ToMouseInput(UINT message, WPARAM wparam, LPARAM lparam);
/// A WM_MOUSEWHEEL or WM_MOUSEHWHEEL message that came to `window`.
engine::WheelInput ToWheelInput(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
/// A WM_(SYS)KEYDOWN or WM_(SYS)KEYUP message. A press takes the character messages that TranslateMessage
/// queued for it out of the window's queue: they are its text, or nothing while Ctrl or Alt is held.
engine::KeyInput ToKeyInput(HWND window, UINT message, WPARAM wparam, LPARAM lparam);

}  // namespace testbrowser::shell
