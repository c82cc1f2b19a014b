// Evaluates scripts in a page and turns their values into text.
#pragma once

#include <windows.h>
#include <mshtml.h>
#include <optional>
#include <string>
#include <string_view>

namespace quillmate::dom {

/// Evaluates a script as the page's own code would. Blocks while the script runs.
/// @param script in the ANSI code page.
/// @return the value's text in the ANSI code page: "" for null and undefined, true or false, a number's or a
/// string's
///         text; nothing when the script threw, or its value has no text.
std::optional<std::string> EvaluateScript(IHTMLWindow2* window, std::string_view script);

}  // namespace quillmate::dom
