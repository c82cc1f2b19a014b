#pragma once

#include <windows.h>
#include <exdisp.h>

namespace quillmate {

/// Selects the browser's tab through the accessibility tree of its frame's tab strip: the first tab whose
/// name begins with the tab's caption (its document's title, or else its address).
bool ActivateIeTab(IWebBrowser2* browser);

/// Cycles the tabs of a hosting frame with Ctrl+PageDown until its window text begins with the tab's caption.
/// @return false when the frame is not there, the caption cannot be read, or 99 rounds did not show it.
bool ActivateHostedTab(IWebBrowser2* browser, HWND tab_window);

}  // namespace quillmate
