#include "utf8.h"

#include <algorithm>
#include <array>

namespace quillmate::player {
namespace {

struct Character {
  char32_t code;
  std::size_t length;  // 0: not valid
};

bool IsContinuation(unsigned char byte) { return (byte & 0xC0) == 0x80; }

// Overlong forms, surrogates and what lies beyond the last plane are invalid.
Character Decode(std::string_view text) {
  const auto lead = static_cast<unsigned char>(text[0]);
  if (lead < 0x80) return {lead, 1};
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  static constexpr std::array<char32_t, 5> kSmallest = {0, 0, 0x80, 0x800, 0x10000};
  if (lead < 0xC2 || lead > 0xF4 || text.size() < length) return {0, 0};
  char32_t code = lead & (0xFFU >> (length + 1));
  for (std::size_t i = 1; i < length; ++i) {
    const auto next = static_cast<unsigned char>(text[i]);
    if (!IsContinuation(next)) return {0, 0};
    code = code << 6 | (next & 0x3FU);
  }
  const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
  if (code < kSmallest[length] || code > 0x10FFFF || surrogate) return {0, 0};
  return {code, length};
}

struct Range {
  char32_t first, last;
};

std::size_t WidthOf(char32_t code) {
  static constexpr std::array<Range, 3> kNone = {{{0x0300, 0x036F}, {0x200B, 0x200F}, {0xFE00, 0xFE0F}}};
  static constexpr std::array<Range, 7> kWide = {{{0x1100, 0x115F},
                                                  {0x2E80, 0xA4CF},
                                                  {0xAC00, 0xD7A3},
                                                  {0xF900, 0xFAFF},
                                                  {0xFE30, 0xFE6F},
                                                  {0xFF00, 0xFF60},
                                                  {0x1F300, 0x3FFFD}}};
  const auto holds = [code](Range range) { return code >= range.first && code <= range.last; };
  if (std::ranges::any_of(kNone, holds)) return 0;
  return std::ranges::any_of(kWide, holds) ? 2 : 1;
}

// An invalid byte counts, and is shown, as one character.
Character Next(std::string_view text) {
  const Character character = Decode(text);
  return character.length == 0 ? Character{0xFFFD, 1} : character;
}

}  // namespace

std::size_t FindInvalidUtf8(std::string_view text) {
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t length = Decode(text.substr(at)).length;
    if (length == 0) return at;
    at += length;
  }
  return std::string_view::npos;
}

std::size_t DisplayWidth(std::string_view text) {
  std::size_t width = 0;
  while (!text.empty()) {
    const Character character = Next(text);
    width += WidthOf(character.code);
    text.remove_prefix(character.length);
  }
  return width;
}

std::string CutTo(std::string_view text, std::size_t columns) {
  if (DisplayWidth(text) <= columns) return std::string(text);
  std::size_t width = 1;  // the ellipsis
  std::size_t end = 0;
  while (end < text.size()) {
    const Character character = Next(text.substr(end));
    width += WidthOf(character.code);
    if (width > columns) break;
    end += character.length;
  }
  return std::string(text.substr(0, end)) + "…";
}

std::string FitTo(std::string_view text, std::size_t columns) {
  std::string fitted = CutTo(text, columns);
  const std::size_t width = DisplayWidth(fitted);
  if (width < columns) fitted.append(columns - width, ' ');
  return fitted;
}

int ColumnOf(std::string_view line, std::size_t offset) {
  const std::string_view before = line.substr(0, offset);
  const auto continuations = std::ranges::count_if(
      before, [](char byte) { return IsContinuation(static_cast<unsigned char>(byte)); });
  return static_cast<int>(before.size() - static_cast<std::size_t>(continuations)) + 1;
}

}  // namespace quillmate::player
