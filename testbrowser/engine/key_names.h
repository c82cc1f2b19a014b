// The names that a page's key events carry, from the virtual key codes of window messages.
#pragma once

#include <string>

#include "engine/input_event.h"

namespace testbrowser::engine {

struct KeyName {
  std::string key;   ///< KeyboardEvent.key
  std::string code;  ///< KeyboardEvent.code
  int location = 0;  ///< KeyboardEvent.location: 1 left, 2 right, 3 keypad
};

KeyName NameOf(const KeyInput& input);

}  // namespace testbrowser::engine
