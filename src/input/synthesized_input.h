// Keys and mouse input sent to the system, and the wait until a window has taken them.
#pragma once

#include <string_view>

#include "locate/screen_area.h"

namespace quillmate {

// Synthesised input waits in the queue of the window's thread after the call that sent it. A command that
// returned at once would let the next one find a page that has not seen it.

/// Waits until the window under the cursor has taken the mouse input sent so far, at most half a second.
void AwaitMouseTaken();

/// Waits until the window with the keyboard focus has taken the keys sent so far, at most half a second.
void AwaitKeysTaken();

/// Puts the cursor on a screen point at once.
/// @return whether the system accepted it.
bool PlaceCursor(ScreenPoint point);

// Presses and releases at the place where the cursor is; instantaneous.
void PressLeft();
void ReleaseLeft();
void ClickLeft();
/// Waits first until the system would not take the clicks together with an earlier one of the library: the
/// page would see a triple click.
void ClickLeftTwice();
void ClickRight();

/// Moves the cursor to a screen point the way a hand would; takes 3 to 6 ms for every 16 to 20 pixels.
/// @return always true.
bool HumanMouseMove(ScreenPoint end);

/// Presses the keys of a sequence such as "{CTRL}{ALT}{F4}" or "{ctrl}a" in order and releases them in
/// reverse: a chord, not typed text. The strokes go to the window with the keyboard focus.
/// @return whether every key name is known. Deliberate: at an unknown one the call ends at once and
/// the keys pressed before it stay down.
bool SendKeySequence(std::string_view sequence);

}  // namespace quillmate
