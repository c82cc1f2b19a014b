#pragma once

#include <memory>
#include <string_view>

#include "session/window_holder.h"

namespace quillmate {

/// Searches the desktop's windows in Z order, then the shell's own list of browsers.
/// @param locator "index=N" (from 0, counted within each frame), "url=", "title=" (both the whole text),
/// "handle=" (a window handle, decimal or hexadecimal with 0x), or an element locator that the page must
/// satisfy. Quotes around it are removed first; when that finds nothing it is tried unchanged.
/// @return the surface, null when there is none.
std::unique_ptr<WindowHolder> FindTarget(std::string_view locator);

}  // namespace quillmate
