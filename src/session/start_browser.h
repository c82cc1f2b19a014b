#pragma once

#include <exdisp.h>
#include <string_view>

#include "com/com_ptr.h"

namespace quillmate {

/// Starts an Internet Explorer, visible, by its application object or, where that fails, by its program.
/// Starting the program takes at least three seconds.
/// @return its browser object, not yet navigated; null when neither way works.
com::ComPtr<IWebBrowser2> StartBrowser();

/// How a page is opened.
enum class OpenIn { kSameTab, kNewTab };

/// Sends a browser to an address.
/// @param url in the ANSI code page.
/// @return whether the browser took the order; loading goes on afterwards.
bool NavigateBrowser(IWebBrowser2* browser, std::string_view url, OpenIn where);

}  // namespace quillmate
