// From a locator to elements of the current page.
#pragma once

#include <windows.h>
#include <mshtml.h>
#include <expected>
#include <string_view>

#include "api/command_params.h"
#include "api/result.h"
#include "com/com_ptr.h"

namespace quillmate::locate {

using ElementOrFailure = std::expected<com::ComPtr<IHTMLElement>, api::Failure>;

/// Finds the element that a locator names: a remembered element first, then the first match in the current
/// frame's document. Never waits.
/// @return the element, or the failure message of the search.
ElementOrFailure FindElement(std::string_view locator);

/// Reads "target", checks that it is an element locator and finds its element.
/// @return the element, the locator's verification message, or the failure message of the search.
ElementOrFailure ResolveTargetElement(const api::CommandParams& params);

}  // namespace quillmate::locate
