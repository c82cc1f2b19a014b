// Mouse and key input as the engine takes it: client pixels, and the flags of the window message it came
// from.
#pragma once

#include <string>

namespace testbrowser::engine {

enum Modifier : unsigned { kAlt = 1, kCtrl = 2, kMeta = 4, kShift = 8 };
/// Buttons as a set: what is held down after the event.
enum ButtonSet : unsigned { kLeftHeld = 1, kRightHeld = 2, kMiddleHeld = 4 };
enum class MouseButton { kNone, kLeft, kRight, kMiddle };

struct MouseInput {
  enum class Type { kMove, kPress, kRelease };
  Type type = Type::kMove;
  int x = 0;  ///< client pixels of the page's window
  int y = 0;
  MouseButton button = MouseButton::kNone;  ///< the button that changed; none for a move
  unsigned held = 0;                        ///< ButtonSet after the event
  int clicks = 0;          ///< 1 for a click, 2 for the second press and release of a double click
  unsigned modifiers = 0;  ///< Modifier set
};

struct WheelInput {
  int x = 0;  ///< client pixels
  int y = 0;
  int delta_x = 0;  ///< in the window message's unit: 120 a notch, positive to the right
  int delta_y = 0;  ///< 120 a notch, positive away from the user (the page scrolls up)
  unsigned modifiers = 0;
};

struct KeyInput {
  bool down = true;
  unsigned virtual_key = 0;  ///< Windows' virtual key code
  unsigned scan_code = 0;    ///< of the message, without the extended bit
  bool extended = false;     ///< right-hand Ctrl and Alt, the grey keys, the keypad's Enter and Divide
  bool repeat = false;
  unsigned modifiers = 0;
  std::wstring text;  ///< the characters of the WM_CHAR that goes with a press; empty when there is none
};

}  // namespace testbrowser::engine
