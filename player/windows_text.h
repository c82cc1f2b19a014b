// Texts on their way to and from Windows.
#pragma once

#include <string>
#include <string_view>

namespace quillmate::player {

std::string Utf8FromWide(std::wstring_view text);
std::wstring WideFromUtf8(std::string_view text);
/// From the system's ANSI code page, whichever that is.
std::string Utf8FromAnsi(std::string_view text);

}  // namespace quillmate::player
