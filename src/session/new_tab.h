// Opens an address in a new tab and finds that tab: the browser object in hand stays with the old one.
#pragma once

#include <memory>
#include <string_view>

#include "session/window_holder.h"

namespace quillmate::session {

/// @param url in the ANSI code page.
/// @return the new tab's holder; null when the browser refused, or showed no new tab within five seconds.
std::unique_ptr<WindowHolder> OpenNewTab(const TabBrowserHolder& holder, std::string_view url);

}  // namespace quillmate::session
