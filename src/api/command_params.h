// JSON's \u escapes of characters beyond ASCII.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "api/result.h"
#include "api/validation.h"

namespace quillmate {

/// The parameters of one command: JSON text of one object whose members are strings.
class CommandParams {
 public:
  /// @param text the parameter text in the ANSI code page, converted once from the host's UTF-8.
  explicit CommandParams(std::string text) : text_(std::move(text)) {}

  /// Reads one member by name, ignoring ASCII case; the first that matches wins.
  /// @return the member's text; empty when it is missing, no string, or the parameter text is no JSON object.
  std::string Get(const char* key) const;

 private:
  std::string text_;
};

// Readers that check what they read and fail with the message of the check.

/// @return an element locator, or the locator's message.
OrFailure<std::string> Locator(const CommandParams& params, const char* key = "target");
/// @return a locator, or the empty text where the parameter may be left out; else the locator's message.
OrFailure<std::string> OptionalLocator(const CommandParams& params, const char* key);
/// @return a text of up to 65,535 bytes, or "Invalid parameter"'s message.
OrFailure<std::string> TextValue(const CommandParams& params, const char* key = "value");
/// @return two numbers written "X,Y", or the coordinate's message.
OrFailure<CoordinatePair> Coordinates(const CommandParams& params, const char* key = "value");

/// @return the ASCII character that stands for a character in the code page; 0 when none does.
using AsciiLookAlike = std::function<char(char32_t)>;

/// Replaces escapes of characters beyond ASCII by the characters: the parser would write them as UTF-8, also
/// into text of another code page. Pairs of surrogates are one character, and lone ones stay, as do escapes
/// of ASCII characters.
/// @param json JSON text in UTF-8.
/// @param look_alike what becomes ASCII in the code page is escaped as that: a quotation mark that came out
/// of an escape must not end the string.
std::string DecodeUnicodeEscapes(std::string_view json, const AsciiLookAlike& look_alike);

}  // namespace quillmate
