// The text of an element's attribute, whatever the document mode makes of it.
#pragma once

#include <windows.h>
#include <mshtml.h>
#include <optional>
#include <string>
#include <string_view>

namespace quillmate {

/// Reads an attribute as far as one call tells: in old document modes a property that the page does not set
/// reads as its default.
/// @param name the attribute's name in the ANSI code page.
/// @return its text as written in the page, in the ANSI code page; nothing when there is no such attribute.
std::optional<std::string> ReadAttribute(IHTMLElement* element, std::string_view name);

/// Reads an attribute that the page sets.
/// @return its text as above; nothing when the page does not set it, in every document mode.
std::optional<std::string> ReadWrittenAttribute(IHTMLElement* element, std::string_view name);

}  // namespace quillmate
