// One pass over the text, escape by escape.
#include "api/command_params.h"

#include <charconv>
#include <optional>

#include "api/messages.h"

namespace quillmate {
namespace {

constexpr size_t kEscapeLength = 6;
constexpr char32_t kFirstBeyondAscii = 0x80;

bool IsHighSurrogate(char32_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool IsLowSurrogate(char32_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

/// Reads "\uXXXX" at the text's begin.
std::optional<char32_t> ReadUnit(std::string_view text) {
  if (text.size() < kEscapeLength || !text.starts_with("\\u")) return std::nullopt;
  unsigned unit = 0;
  const char* end = text.data() + kEscapeLength;
  const auto read = std::from_chars(text.data() + 2, end, unit, 16);
  if (read.ec != std::errc() || read.ptr != end) return std::nullopt;
  return unit;
}

struct Escape {
  char32_t character;
  size_t length;
};

/// Reads the escape of one character beyond ASCII at the text's begin.
std::optional<Escape> ReadEscape(std::string_view text) {
  const auto unit = ReadUnit(text);
  if (!unit || *unit < kFirstBeyondAscii || IsLowSurrogate(*unit)) return std::nullopt;
  if (!IsHighSurrogate(*unit)) return Escape{*unit, kEscapeLength};
  const auto low = ReadUnit(text.substr(kEscapeLength));
  if (!low || !IsLowSurrogate(*low)) return std::nullopt;
  return Escape{0x10000 + ((*unit - 0xD800) << 10) + (*low - 0xDC00), 2 * kEscapeLength};
}

void AppendUtf8(std::string& text, char32_t character) {
  const auto tail = [&](int shift) { return static_cast<char>(0x80 | ((character >> shift) & 0x3F)); };
  if (character < 0x800) {
    text += static_cast<char>(0xC0 | (character >> 6));
  } else if (character < 0x10000) {
    text += static_cast<char>(0xE0 | (character >> 12));
    text += tail(6);
  } else {
    text += static_cast<char>(0xF0 | (character >> 18));
    text += tail(12);
    text += tail(6);
  }
  text += tail(0);
}

void AppendAsciiEscape(std::string& text, char character) {
  constexpr char kDigits[] = "0123456789abcdef";
  text += "\\u00";
  text += kDigits[character >> 4];
  text += kDigits[character & 0xF];
}

}  // namespace

std::string CommandParams::Get(const char* key) const {
  // Text after the object is accepted; the terminator belongs to the length.
  const com::JsonPtr root(cJSON_ParseWithLengthOpts(text_.c_str(), text_.size() + 1, nullptr, false));
  const cJSON* member = cJSON_GetObjectItem(root.get(), key);
  if (!cJSON_IsString(member)) return {};
  return member->valuestring;
}

OrFailure<std::string> Locator(const CommandParams& params, const char* key) {
  std::string locator = params.Get(key);
  if (!IsElementLocator(locator)) return Failed(messages::kInvalidElementLocator);
  return locator;
}

OrFailure<std::string> OptionalLocator(const CommandParams& params, const char* key) {
  std::string locator = params.Get(key);
  if (!locator.empty() && !IsElementLocator(locator)) return Failed(messages::kInvalidElementLocator);
  return locator;
}

OrFailure<std::string> TextValue(const CommandParams& params, const char* key) {
  std::string text = params.Get(key);
  if (!IsTextValue(text)) return Failed(messages::kInvalidParameter);
  return text;
}

OrFailure<CoordinatePair> Coordinates(const CommandParams& params, const char* key) {
  const auto pair = ParseCoordinatePair(params.Get(key));
  if (!pair) return Failed(messages::kInvalidCoordinate);
  return *pair;
}

std::string DecodeUnicodeEscapes(std::string_view json, const AsciiLookAlike& look_alike) {
  std::string decoded;
  decoded.reserve(json.size());
  for (size_t i = 0; i < json.size();) {
    if (const auto escape = ReadEscape(json.substr(i))) {
      if (const char plain = look_alike(escape->character)) {
        AppendAsciiEscape(decoded, plain);
      } else {
        AppendUtf8(decoded, escape->character);
      }
      i += escape->length;
      continue;
    }
    // Another escape is copied whole: the backslash of "\\u20ac" escapes a backslash.
    const size_t length = json[i] == '\\' && i + 1 < json.size() ? 2 : 1;
    decoded += json.substr(i, length);
    i += length;
  }
  return decoded;
}

}  // namespace quillmate
