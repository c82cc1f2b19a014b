// The one rule by which commands call an element visible.
#pragma once

#include <windows.h>
#include <mshtml.h>

#include "com/com_ptr.h"

namespace quillmate {

enum class Display {
  kShown,
  kHidden,
  /// A call failed on its way to the page.
  kUnknown
};

/// An element is shown when neither it nor any of its ancestors has a computed display of none. Size,
/// opacity, the visibility property and the scroll position play no part. An element without a style, or
/// null, is hidden.
Display ReadDisplay(com::ComPtr<IHTMLElement> element);

}  // namespace quillmate
