// Makes a tab the visible one of its frame.
#pragma once

#include <windows.h>
#include <exdisp.h>
#include <optional>
#include <string>

namespace quillmate::session {

/// A tab's caption: its document's title; without one, its address without a leading "file://".
/// @return the caption in the ANSI code page; nothing when a call to the browser failed.
std::optional<std::string> GetTabCaption(IWebBrowser2* browser);

/// Selects the browser's tab through the accessibility tree of its frame's tab strip: the first tab whose
/// name begins with the caption.
bool ActivateIeTab(IWebBrowser2* browser);

/// Cycles the tabs of a hosting frame with Ctrl+PageDown until its window text begins with the tab's caption.
/// @return false when the frame or the caption cannot be had, or 99 rounds did not show it.
bool ActivateHostedTab(IWebBrowser2* browser, HWND tab_window);

}  // namespace quillmate::session
