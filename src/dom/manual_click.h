// A click by the real pointer instead of by the object model.
#pragma once

#include <windows.h>
#include <mshtml.h>

#include "api/result.h"

namespace quillmate::dom {

/// Brings the element's page to the top and clicks the element's centre with the system's pointer.
/// @return a plain success, the failures of locate::GetElementClickPoint, or "Double click failed!" when the
/// cursor
///         cannot be placed.
api::Result ClickManually(IHTMLElement* element);

}  // namespace quillmate::dom
