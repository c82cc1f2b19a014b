// Internet Explorer, and Edge in its Internet Explorer mode, started as a user's programs.
#pragma once

#include <windows.h>
#include <string>

#include "support/under_test.h"

namespace quillmate::test {

/// @return the first page's window under a window; null when there is none.
HWND FindPage(HWND parent);

/// Starts a browser on an address and waits for its frame. Throws when none comes.
HWND StartRealBrowser(BrowserKind kind, const std::string& url);

/// Closes a frame as its user would. @return whether it is gone.
bool CloseFrame(HWND frame);

/// The browsers that run now are somebody else's: no test of this process and of those that it starts ends them.
void SpareRunningBrowsers();
bool IsSpared(DWORD process);

}  // namespace quillmate::test
