// JSON's \u escapes of characters beyond ASCII.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace quillmate {

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
