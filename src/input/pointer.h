// The system's pointer and its buttons.
#pragma once

#include "locate/screen_area.h"

namespace quillmate {

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

}  // namespace quillmate
