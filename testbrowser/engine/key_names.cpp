#include "engine/key_names.h"

#include <windows.h>
#include <cctype>
#include <map>

#include "com/encoding.h"

namespace testbrowser::engine {
namespace {

struct Entry {
  const char* key;              ///< empty for keys that type a character
  const char* code;             ///< of the main block
  const char* other_code = "";  ///< with the extended bit the other way round: right-hand or keypad key
};

const std::map<unsigned, Entry>& Entries() {
  static const std::map<unsigned, Entry> entries = {
      {VK_BACK, {"Backspace", "Backspace"}},
      {VK_TAB, {"Tab", "Tab"}},
      {VK_RETURN, {"Enter", "Enter", "NumpadEnter"}},
      {VK_SHIFT, {"Shift", "ShiftLeft", "ShiftRight"}},
      {VK_CONTROL, {"Control", "ControlLeft", "ControlRight"}},
      {VK_MENU, {"Alt", "AltLeft", "AltRight"}},
      {VK_PAUSE, {"Pause", "Pause"}},
      {VK_CAPITAL, {"CapsLock", "CapsLock"}},
      {VK_ESCAPE, {"Escape", "Escape"}},
      {VK_SPACE, {"", "Space"}},
      {VK_PRIOR, {"PageUp", "PageUp", "Numpad9"}},
      {VK_NEXT, {"PageDown", "PageDown", "Numpad3"}},
      {VK_END, {"End", "End", "Numpad1"}},
      {VK_HOME, {"Home", "Home", "Numpad7"}},
      {VK_LEFT, {"ArrowLeft", "ArrowLeft", "Numpad4"}},
      {VK_UP, {"ArrowUp", "ArrowUp", "Numpad8"}},
      {VK_RIGHT, {"ArrowRight", "ArrowRight", "Numpad6"}},
      {VK_DOWN, {"ArrowDown", "ArrowDown", "Numpad2"}},
      {VK_SNAPSHOT, {"PrintScreen", "PrintScreen"}},
      {VK_INSERT, {"Insert", "Insert", "Numpad0"}},
      {VK_DELETE, {"Delete", "Delete", "NumpadDecimal"}},
      {VK_LWIN, {"Meta", "MetaLeft"}},
      {VK_RWIN, {"Meta", "MetaRight"}},
      {VK_APPS, {"ContextMenu", "ContextMenu"}},
      {VK_MULTIPLY, {"", "NumpadMultiply"}},
      {VK_ADD, {"", "NumpadAdd"}},
      {VK_SUBTRACT, {"", "NumpadSubtract"}},
      {VK_DECIMAL, {"", "NumpadDecimal"}},
      {VK_DIVIDE, {"", "NumpadDivide"}},
      {VK_NUMLOCK, {"NumLock", "NumLock"}},
      {VK_SCROLL, {"ScrollLock", "ScrollLock"}},
      {VK_OEM_1, {"", "Semicolon"}},
      {VK_OEM_PLUS, {"", "Equal"}},
      {VK_OEM_COMMA, {"", "Comma"}},
      {VK_OEM_MINUS, {"", "Minus"}},
      {VK_OEM_PERIOD, {"", "Period"}},
      {VK_OEM_2, {"", "Slash"}},
      {VK_OEM_3, {"", "Backquote"}},
      {VK_OEM_4, {"", "BracketLeft"}},
      {VK_OEM_5, {"", "Backslash"}},
      {VK_OEM_6, {"", "BracketRight"}},
      {VK_OEM_7, {"", "Quote"}},
  };
  return entries;
}

/// Whether the extended bit of this key's messages marks the key of the main block (the grey keys), as
/// opposed to keys where it marks the right-hand or keypad one.
bool ExtendedIsMain(unsigned key) {
  return (key >= VK_PRIOR && key <= VK_DOWN) || key == VK_INSERT || key == VK_DELETE;
}

/// The right Shift has no extended bit, only a scan code of its own.
bool IsOther(const KeyInput& input) {
  constexpr unsigned kRightShiftScanCode = 0x36;
  if (input.virtual_key == VK_SHIFT) return input.scan_code == kRightShiftScanCode;
  return input.extended != ExtendedIsMain(input.virtual_key);
}

/// The character that the key types, as far as it is known without a WM_CHAR (a chord has none).
std::string TypedKey(const KeyInput& input) {
  if (!input.text.empty() && input.text[0] >= L' ') return quillmate::com::ToUtf8(input.text);
  auto character = static_cast<wchar_t>(MapVirtualKeyW(input.virtual_key, MAPVK_VK_TO_CHAR) & 0x7FFF);
  if (character < L' ') return "Unidentified";
  if ((input.modifiers & kShift) == 0 && character < 0x80)
    character = static_cast<wchar_t>(std::tolower(character));
  return quillmate::com::ToUtf8({&character, 1});
}

std::string RegularCode(unsigned key) {
  const auto numbered = [](const char* prefix, unsigned number) { return prefix + std::to_string(number); };
  if (key >= 'A' && key <= 'Z') return std::string("Key") + static_cast<char>(key);
  if (key >= '0' && key <= '9') return numbered("Digit", key - '0');
  if (key >= VK_NUMPAD0 && key <= VK_NUMPAD9) return numbered("Numpad", key - VK_NUMPAD0);
  if (key >= VK_F1 && key <= VK_F24) return numbered("F", key - VK_F1 + 1);
  return "";
}

int LocationOf(const std::string& code) {
  constexpr int kLeftSide = 1;
  constexpr int kRightSide = 2;
  constexpr int kKeypad = 3;
  if (code.starts_with("Numpad")) return kKeypad;
  if (code.starts_with("Arrow") || code.starts_with("Bracket")) return 0;
  if (code.ends_with("Left")) return kLeftSide;
  return code.ends_with("Right") ? kRightSide : 0;
}

}  // namespace

KeyName NameOf(const KeyInput& input) {
  KeyName name;
  const auto entry = Entries().find(input.virtual_key);
  if (entry == Entries().end()) {
    name.code = RegularCode(input.virtual_key);
    const bool is_function_key = input.virtual_key >= VK_F1 && input.virtual_key <= VK_F24;
    name.key = is_function_key ? name.code : TypedKey(input);
  } else {
    const auto& [key, code, other_code] = entry->second;
    name.code = *other_code != 0 && IsOther(input) ? other_code : code;
    name.key = *key != 0 ? key : TypedKey(input);
  }
  name.location = LocationOf(name.code);
  return name;
}

}  // namespace testbrowser::engine
