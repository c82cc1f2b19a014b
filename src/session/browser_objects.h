// The browser's COM objects and the windows they belong to: from one to the other, and the shell's list of
// them.
#pragma once

#include <windows.h>
#include <exdisp.h>
#include <mshtml.h>
#include <functional>

#include "com/owned.h"

namespace quillmate {

/// Keeps the MSHTML type library, which COM uses to marshal calls to the browser process, loaded until the
/// process ends. Without it some systems read the whole library again for each new object, which makes a call
/// several times slower.
void HoldTypeLibrary();

/// @return the window of the first page found under a window, depth first; null when there is none.
HWND FindPageWindow(HWND window);

/// @return the browser that hosts the first page found under a window; null when there is no page or it does
/// not respond within a second.
com::ComPtr<IWebBrowser2> GetWebBrowserFromWindow(HWND window);

/// @return the document of the first page found under a window; null as above.
com::ComPtr<IHTMLDocument2> GetDocumentFromWindow(HWND window);

/// @return the frame window of a browser; null when there is no browser or the call fails.
HWND GetFrameWindow(IWebBrowser2* browser);

/// @return the window of a browser's own tab, whose thread runs the tab's page; null when the calls fail.
/// The frame's window is another process's, and responds while the page hangs (Microsoft's documentation page
/// bb268219).
HWND GetTabWindow(IWebBrowser2* browser);

/// Visits the browsers in the shell's list, in its order, until a visit returns true. Visits none when the
/// list cannot be read. Each call to a browser is limited to a second meanwhile.
void ForEachShellBrowser(const std::function<bool(com::ComPtr<IWebBrowser2>)>& visit);

}  // namespace quillmate
