// Sizes the selected surface's top-level window; shared by selectwindowsize and open.
#pragma once

#include <string>

#include "api/result.h"

namespace quillmate::session {

/// @param size "max", or "WIDTH,HEIGHT" in screen pixels.
/// @return plain success; "Select window size Fail!" for any other text or when the window refuses the size;
///         "Browser not found!" when nothing usable is selected.
api::Result SizeCurrentWindow(const std::string& size);

}  // namespace quillmate::session
