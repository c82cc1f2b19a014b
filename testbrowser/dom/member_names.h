// Numbers for the members of page objects that are not the type library's own.
#pragma once

#include <windows.h>
#include <oaidl.h>
#include <optional>
#include <string>
#include <string_view>

namespace testbrowser::dom {

/// The number of a name that scripts gave; the same for every object and as long as the process lives.
DISPID NumberOfName(std::wstring_view name);
/// @return nothing for numbers that were never given out.
std::optional<std::wstring> NameOfNumber(DISPID number);

/// The number that a kind of object has for a member which the type library numbers `typed`.
DISPID OwnNumberOf(std::string_view kind, DISPID typed);
/// @return nothing for numbers that this kind never gave out.
std::optional<DISPID> TypedNumberOf(std::string_view kind, DISPID own);

}  // namespace testbrowser::dom
