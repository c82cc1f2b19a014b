// The host's parameter text, on its way into the library.
#pragma once

#include <string>

namespace quillmate {

/// Converts UTF-8 to the ANSI code page; characters that it cannot hold become its default character. A
/// \u escape beyond ASCII means the same as its character.
/// @return the empty text for a null pointer, for invalid UTF-8, and for text of 524,280 units or more.
std::string ToCommandParams(const char* utf8);

}  // namespace quillmate
