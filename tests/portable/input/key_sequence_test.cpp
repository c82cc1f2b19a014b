// Key names and how sequences are taken apart.
#include "input/key_sequence.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

namespace quillmate {
namespace {

TEST(SplitKeySequence, HasNoEscapesAndNoNesting) {
  using Tokens = std::vector<KeyToken>;
  const struct {
    const char* sequence;
    Tokens tokens;
  } rows[] = {
      {"", {}},
      {"HI", {"H", "I"}},
      {"{CTRL}{ALT}{F4}", {"CTRL", "ALT", "F4"}},
      {"{CTRL}W", {"CTRL", "W"}},
      {"{CTRL", {"CTRL"}},
      {"{}", {""}},
      {"{", {""}},
      {"{{A}", {"{A"}},
      {"A} B", {"A", "}", " ", "B"}},
  };
  for (const auto& row : rows) EXPECT_EQ(SplitKeySequence(row.sequence), row.tokens) << row.sequence;
}

TEST(FindKey, KnowsTheNamesAndNothingElse) {
  // The codes are the system's virtual keys.
  const std::map<std::uint8_t, std::vector<const char*>> keys = {
      {0x08, {"BACK", "BACKSPACE", "BKSP", "BS"}},
      {0x09, {"TAB"}},
      {0x0D, {"ENTER"}},
      {0x10, {"SHIFT"}},
      {0x11, {"CTRL"}},
      {0x12, {"ALT"}},
      {0x13, {"PAUSE", "PAUSEBREAK"}},
      {0x14, {"CAPITAL", "CAPS", "CAPSLOCK"}},
      {0x1B, {"ESC"}},
      {0x20, {"SPACE"}},
      {0x21, {"PAGEUP", "PGUP"}},
      {0x22, {"PAGEDOWN", "PGDN"}},
      {0x23, {"END"}},
      {0x24, {"HOME"}},
      {0x25, {"LEFT"}},
      {0x26, {"UP"}},
      {0x27, {"RIGHT"}},
      {0x28, {"DOWN"}},
      {0x2D, {"INS", "INSERT"}},
      {0x2E, {"DEL", "DELETE"}},
      {0x39, {"9"}},
      {0x41, {"A"}},
      {0x5B, {"LWIN", "WIN"}},
      {0x5C, {"RWIN"}},
      {0x6A, {"*"}},
      {0x6B, {"+"}},
      {0x6D, {"-"}},
      {0x6E, {"."}},
      {0x6F, {"/"}},
      {0x90, {"NUMLOCK"}},
      {0x91, {"SCRLK", "SCROLL", "SCROLLLOCK"}},
      {0xA0, {"LSHIFT"}},
      {0xA1, {"RSHIFT"}},
      {0xA2, {"LCTRL"}},
      {0xA3, {"RCTRL"}},
      {0xA4, {"LALT"}},
      {0xA5, {"RALT"}},
  };
  for (const auto& [code, names] : keys) {
    for (const char* name : names) EXPECT_EQ(FindKey(name), code) << name;
  }
  for (std::uint8_t number = 0; number < 10; ++number) {
    EXPECT_EQ(FindKey("NUMPAD" + std::to_string(number)), 0x60 + number);
  }
  for (std::uint8_t number = 1; number <= 12; ++number) {
    EXPECT_EQ(FindKey("F" + std::to_string(number)), 0x6F + number);
  }
  for (const char* name : {"a", "F13", "", " ", "{A", "=", "PRINTSCREEN", "CTRLX", "\xC8\xB7"}) {
    EXPECT_EQ(FindKey(name), std::nullopt) << name;
  }
}

TEST(ToUpperAscii, LeavesBytesOfOtherAlphabetsAlone) {
  EXPECT_EQ(ToUpperAscii("{ctrl}a\xE4\xB6z"), "{CTRL}A\xE4\xB6Z");
}

}  // namespace
}  // namespace quillmate
