// Commands that choose, navigate, size and close browser windows and tabs.
#pragma once

#include "api/command_params.h"
#include "api/result.h"

namespace quillmate::session {

/// Makes a window, tab or modal dialog current and brings it to the front.
/// @param params "target": a window locator.
/// @return a plain success; "Browser not found!", or "Failed to place the web page to top!" when it stays
/// behind (it is current all the same).
api::Result SelectWindow(const api::CommandParams& params);

/// Makes a window, tab or modal dialog current and leaves it where it is.
/// @param params "target": a window locator. "tab-status": exactly "loading" waits up to five seconds for the
/// page.
/// @return a plain success; "Browser not found!", or "The page load timeout." (it is current all the same).
api::Result SelectWindowUntop(const api::CommandParams& params);

/// Starts a browser on about:blank and makes it current.
/// @return a plain success; "Open new browser failed!".
api::Result NewBrowser(const api::CommandParams& params);

/// Navigates the current tab, or a new browser when no tab is current.
/// @param params "target": the address; a "file:" address must name an existing file. "by": empty, or
/// "_blank" for a new tab. "resize-max": exactly "False" leaves the window's size.
/// @return a plain success; "Open new tab failed!", or the failure of maximising.
api::Result Open(const api::CommandParams& params);

/// Closes the current window.
/// @return a plain success, after which nothing is current; "Frame not found!" when nothing is current, "Quit
/// failed!".
api::Result Quit(const api::CommandParams& params);

/// Closes the current tab.
/// @param params "option": exactly "others" closes the other tabs of its window instead.
/// @return a plain success, after which nothing is current; "Frame not found!" when nothing is current,
/// "Close failed!".
api::Result Close(const api::CommandParams& params);

/// Loads the current page again.
/// @return a plain success; "Frame not found!" while the page is still loading, "Refresh Fail!".
api::Result Refresh(const api::CommandParams& params);

/// Goes one page forward in the tab's history.
/// @return a plain success; "Frame not found!" when nothing is current, "Go forward Fail!".
api::Result Forward(const api::CommandParams& params);

/// Goes one page back in the tab's history.
/// @return a plain success; "Frame not found!" when nothing is current, "Go back Fail!".
api::Result Back(const api::CommandParams& params);

/// Sizes the current window.
/// @param params "target": "max", or "WIDTH,HEIGHT" in screen pixels.
/// @return a plain success; "Browser not found!" when nothing is current, "Select window size Fail!".
api::Result SelectWindowSize(const api::CommandParams& params);

/// Reads the address of the current page, or of the selected frame's page.
/// @return text: the address in UTF-8; "Browser not found!" when nothing is current, "Frame not found!", "Get
/// url failed!".
api::Result CurrentUrl(const api::CommandParams& params);

}  // namespace quillmate::session
