// The one rule by which commands call an element visible.
#pragma once

#include <windows.h>
#include <mshtml.h>

#include "com/com_ptr.h"

namespace quillmate {

/// Whether neither the element nor any of its ancestors has a computed display of none. Size, opacity, the
/// visibility property and the scroll position play no part. An element that cannot be asked, or is null, is
/// not displayed.
bool IsElementDisplayed(com::ComPtr<IHTMLElement> element);

}  // namespace quillmate
