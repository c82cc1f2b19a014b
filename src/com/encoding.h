// Conversions between UTF-16 and byte strings. The library's own strings are in the system's ANSI code page;
// UTF-16 lives at COM boundaries only.
#pragma once

#include <string>
#include <string_view>

namespace quillmate::com {

/// UTF-16 to the ANSI code page. Characters that the code page cannot hold become its default character.
std::string ToAnsi(std::wstring_view text);
/// The ANSI code page to UTF-16.
std::wstring FromAnsi(std::string_view text);
/// UTF-16 to UTF-8; a lone surrogate becomes U+FFFD.
std::string ToUtf8(std::wstring_view text);
/// UTF-8 to UTF-16; an invalid byte becomes U+FFFD.
std::wstring FromUtf8(std::string_view text);

/// Whether a byte of the ANSI code page begins a character of two bytes.
bool IsLeadByte(char byte);

}  // namespace quillmate::com
