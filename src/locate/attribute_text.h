// The text of an element's attribute, whatever the document mode makes of it.
#pragma once

#include <windows.h>
#include <mshtml.h>
#include <optional>
#include <string>
#include <string_view>

namespace quillmate::locate {

/// Reads an attribute as it is written in the page.
/// @param name the attribute's name in the ANSI code page.
/// @return its text in the ANSI code page; nothing when the element has no such attribute or cannot be asked.
std::optional<std::string> ReadAttribute(IHTMLElement* element, std::string_view name);

}  // namespace quillmate::locate
