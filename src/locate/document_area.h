#pragma once

#include <windows.h>
#include <mshtml.h>
#include <optional>

#include "locate/frames.h"
#include "locate/screen_area.h"
#include "session/session.h"

namespace quillmate {

/// @return the element's bounding rectangle in client pixels of its document; nothing when it cannot be
/// measured (an element outside the page's tree).
std::optional<Rectangle> ReadClientRect(IHTMLElement* element);

/// @return the area on the screen of a path's last document, visible through all its frames; nothing when a
/// level cannot be measured.
std::optional<DocumentArea> GetDocumentScreenArea(Session& session, const FramePath& path);

}  // namespace quillmate
