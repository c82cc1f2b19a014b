#pragma once

#include <string_view>

namespace quillmate {

/// Presses the keys of a sequence such as "{CTRL}{ALT}{F4}" or "{ctrl}a" in order and releases them in
/// reverse: a chord, not typed text. The strokes go to the window with the keyboard focus.
/// @return whether every key name is known. Deliberate: at an unknown one the call ends at once and
/// the keys pressed before it stay down.
bool SendKeySequence(std::string_view sequence);

}  // namespace quillmate
