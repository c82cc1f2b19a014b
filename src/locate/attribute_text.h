// Reads attribute text the same way in every document mode.
#pragma once

#include <windows.h>
#include <mshtml.h>
#include <optional>
#include <string>
#include <string_view>

namespace quillmate {

/// The flag of getAttribute that asks for the value as the page's source has it.
inline constexpr LONG kAttributeAsWritten = 2;

/// Whether an attribute has a property of another name behind it ("class", "for"): below document mode 8
/// only the property has the value.
bool HasPropertyName(std::wstring_view name);

/// Reads an attribute as far as one call tells: in old document modes a property that the page does not set
/// reads as its default.
/// @param name the attribute's name in the ANSI code page.
/// @return its text as written in the page, in the ANSI code page; nothing when there is no such attribute.
std::optional<std::string> ReadAttribute(IHTMLElement* element, std::string_view name);

/// The same, with the result of the call that failed.
HRESULT ReadAttribute(IHTMLElement* element, std::string_view name, std::optional<std::string>& text);

/// Reads an attribute that the page sets.
/// @return its text as above; nothing when the page does not set it, in every document mode.
std::optional<std::string> ReadWrittenAttribute(IHTMLElement* element, std::string_view name);

}  // namespace quillmate
