// Numbers for the members of page objects that no type library knows: what scripts gave them.
#pragma once

#include <windows.h>
#include <oaidl.h>
#include <optional>
#include <string>
#include <string_view>

namespace testbrowser::dom {

/// The number of a name; the same for every object and as long as the process lives.
DISPID NumberOfName(std::wstring_view name);
/// @return nothing for numbers that were never given out.
std::optional<std::wstring> NameOfNumber(DISPID number);

}  // namespace testbrowser::dom
