#pragma once

#include <windows.h>
#include <mshtml.h>
#include <optional>
#include <string>
#include <string_view>

namespace quillmate {

/// Evaluates a script as the page's own code would. Blocks while the script runs. Why a script failed goes to
/// the debug output.
/// @param script in the ANSI code page.
/// @return the value's text in the ANSI code page: "" for null and undefined, true or false, a number's or a
/// string's text, an object's default text, "[object]" for an object without one; nothing when the script
/// threw or the page ran none.
std::optional<std::string> EvaluateScript(IHTMLWindow2* window, std::string_view script);

}  // namespace quillmate
