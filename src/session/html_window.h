// Reaches the COM objects behind an "Internet Explorer_Server" window.
#pragma once

#include <windows.h>
#include <exdisp.h>
#include <mshtml.h>

#include "com/com_ptr.h"

namespace quillmate::session {

/// Whether a window's class has exactly this name.
bool IsWindowOfClass(HWND window, const wchar_t* class_name);

/// Climbs from a window through its parents, itself included.
/// @return the first window of the class, null when there is none.
HWND FindAncestorOfClass(HWND window, const wchar_t* class_name);

/// @return the window of the first page found under a window, depth first; null when there is none.
HWND FindPageWindow(HWND window);

/// @return the browser that hosts the first page found under a window; null when there is no page or it does
/// not
///         answer within a second.
com::ComPtr<IWebBrowser2> GetWebBrowserFromWindow(HWND window);

/// @return the window of a browser's own tab, whose thread runs the tab's page; null when it cannot be had.
/// The frame's window is another process's, and answers while the page hangs (Microsoft's documentation page
/// bb268219).
HWND GetTabWindow(IWebBrowser2* browser);

/// @return the document of the first page found under a window; null as above.
com::ComPtr<IHTMLDocument2> GetDocumentFromWindow(HWND window);

}  // namespace quillmate::session
