// Key names and how sequences are taken apart.
#include "input/key_sequence.h"

#include <gtest/gtest.h>

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
  const struct {
    const char* name;
    std::optional<std::uint8_t> code;
  } rows[] = {
      {"A", 0x41},       {"9", 0x39},         {"+", 0x6B},   {"/", 0x6F},        {"NUMPAD0", 0x60},
      {"NUMPAD9", 0x69}, {"F1", 0x70},        {"F12", 0x7B}, {"PAGEDOWN", 0x22}, {"PGDN", 0x22},
      {"CTRL", 0x11},    {"RALT", 0xA5},      {"WIN", 0x5B}, {"SCRLK", 0x91},    {"PAUSE", 0x13},
      {"a", {}},         {"F13", {}},         {"", {}},      {" ", {}},          {"{A", {}},
      {"=", {}},         {"PRINTSCREEN", {}}, {"CTRLX", {}}, {"\xC8\xB7", {}},
  };
  for (const auto& row : rows) EXPECT_EQ(FindKey(row.name), row.code) << row.name;
}

TEST(ToUpperAscii, LeavesBytesOfOtherAlphabetsAlone) {
  EXPECT_EQ(ToUpperAscii("{ctrl}a\xE4\xB6z"), "{CTRL}A\xE4\xB6Z");
}

}  // namespace
}  // namespace quillmate
