#include "input/send_keys.h"

#include <windows.h>
#include <ranges>

#include "input/key_sequence.h"

namespace quillmate {

bool SendKeySequence(std::string_view sequence) {
  std::vector<BYTE> pressed;
  for (const KeyToken& token : SplitKeySequence(ToUpperAscii(sequence))) {
    const auto code = FindKey(token);
    if (!code) return false;
    // Deliberate: no scan code and no extended-key flag, even for arrows and the right-hand modifiers.
    keybd_event(*code, 0, 0, 0);
    pressed.push_back(*code);
  }
  for (const BYTE code : pressed | std::views::reverse) keybd_event(code, 0, KEYEVENTF_KEYUP, 0);
  return true;
}

}  // namespace quillmate
