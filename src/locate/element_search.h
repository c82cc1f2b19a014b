#pragma once

#include <windows.h>
#include <mshtml.h>
#include <expected>
#include <string_view>

#include "api/command_params.h"
#include "com/com_ptr.h"
#include "locate/document_search.h"
#include "session/current_page.h"

namespace quillmate {

using ElementOrFailure = std::expected<com::ComPtr<IHTMLElement>, SearchFailure>;

/// Finds the element that a locator names: a remembered element first, then the first match in the current
/// frame's document. Never waits.
/// @return the element, or the failure message of the search.
ElementOrFailure FindElement(Session& session, std::string_view locator);

/// The same on a page that the caller has at hand.
ElementOrFailure FindElement(Session& session, const PageOrMissing& page, std::string_view locator);

/// Reads "target", checks that it is an element locator and finds its element.
/// @return the element, the locator's verification message, or the failure message of the search.
ElementOrFailure ResolveTargetElement(Session& session, const CommandParams& params);

}  // namespace quillmate
