#include "input/key_sequence.h"

#include <algorithm>
#include <iterator>

namespace quillmate {
namespace {

struct NamedKey {
  std::string_view name;
  std::uint8_t code;
};

// Virtual-key codes by name, sorted by name. Letters and digits name themselves and are not listed; the
// single punctuation characters are, deliberately, the keys of the numeric pad.
constexpr NamedKey kKeyNameTable[] = {
    {"*", 0x6A},       {"+", 0x6B},        {"-", 0x6D},         {".", 0x6E},       {"/", 0x6F},
    {"ALT", 0x12},     {"BACK", 0x08},     {"BACKSPACE", 0x08}, {"BKSP", 0x08},    {"BS", 0x08},
    {"CAPITAL", 0x14}, {"CAPS", 0x14},     {"CAPSLOCK", 0x14},  {"CTRL", 0x11},    {"DEL", 0x2E},
    {"DELETE", 0x2E},  {"DOWN", 0x28},     {"END", 0x23},       {"ENTER", 0x0D},   {"ESC", 0x1B},
    {"F1", 0x70},      {"F10", 0x79},      {"F11", 0x7A},       {"F12", 0x7B},     {"F2", 0x71},
    {"F3", 0x72},      {"F4", 0x73},       {"F5", 0x74},        {"F6", 0x75},      {"F7", 0x76},
    {"F8", 0x77},      {"F9", 0x78},       {"HOME", 0x24},      {"INS", 0x2D},     {"INSERT", 0x2D},
    {"LALT", 0xA4},    {"LCTRL", 0xA2},    {"LEFT", 0x25},      {"LSHIFT", 0xA0},  {"LWIN", 0x5B},
    {"NUMLOCK", 0x90}, {"NUMPAD0", 0x60},  {"NUMPAD1", 0x61},   {"NUMPAD2", 0x62}, {"NUMPAD3", 0x63},
    {"NUMPAD4", 0x64}, {"NUMPAD5", 0x65},  {"NUMPAD6", 0x66},   {"NUMPAD7", 0x67}, {"NUMPAD8", 0x68},
    {"NUMPAD9", 0x69}, {"PAGEDOWN", 0x22}, {"PAGEUP", 0x21},    {"PAUSE", 0x13},   {"PAUSEBREAK", 0x13},
    {"PGDN", 0x22},    {"PGUP", 0x21},     {"RALT", 0xA5},      {"RCTRL", 0xA3},   {"RIGHT", 0x27},
    {"RSHIFT", 0xA1},  {"RWIN", 0x5C},     {"SCRLK", 0x91},     {"SCROLL", 0x91},  {"SCROLLLOCK", 0x91},
    {"SHIFT", 0x10},   {"SPACE", 0x20},    {"TAB", 0x09},       {"UP", 0x26},      {"WIN", 0x5B},
};
static_assert(std::size(kKeyNameTable) == 70 && std::ranges::is_sorted(kKeyNameTable, {}, &NamedKey::name));

bool NamesItself(std::string_view name) {
  return name.size() == 1 && ((name[0] >= 'A' && name[0] <= 'Z') || (name[0] >= '0' && name[0] <= '9'));
}

}  // namespace

std::vector<KeyToken> SplitKeySequence(std::string_view sequence) {
  std::vector<KeyToken> tokens;
  size_t at = 0;
  while (at < sequence.size()) {
    if (sequence[at] != '{') {
      tokens.emplace_back(1, sequence[at++]);
      continue;
    }
    const size_t stop = std::min(sequence.find('}', at), sequence.size());
    tokens.emplace_back(sequence.substr(at + 1, stop - at - 1));
    at = stop + 1;
  }
  return tokens;
}

std::string ToUpperAscii(std::string_view text) {
  std::string upper(text);
  for (char& c : upper) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  }
  return upper;
}

std::optional<std::uint8_t> FindKey(std::string_view name) {
  if (NamesItself(name)) return static_cast<std::uint8_t>(name[0]);
  const auto* const key = std::ranges::lower_bound(kKeyNameTable, name, {}, &NamedKey::name);
  if (key == std::end(kKeyNameTable) || key->name != name) return std::nullopt;
  return key->code;
}

}  // namespace quillmate
