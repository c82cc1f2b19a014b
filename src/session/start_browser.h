#pragma once

#include <exdisp.h>
#include <string_view>

#include "com/owned.h"

namespace quillmate {

/// Starts an Internet Explorer, visible, by its application object or, where that fails, by its program.
/// Starting the program takes at least three seconds.
/// @return its browser object, not yet navigated; null when neither way works.
com::ComPtr<IWebBrowser2> StartBrowser();

/// How a page is opened.
enum class OpenIn { kSameTab, kNewTab };

/// Tells a browser to show an address.
/// @param url in the ANSI code page.
/// @return Navigate2's result; a failure without a browser. Loading goes on afterwards.
HRESULT NavigateBrowser(IWebBrowser2* browser, std::string_view url, OpenIn where);

}  // namespace quillmate
