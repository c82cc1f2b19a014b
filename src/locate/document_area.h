#pragma once

#include <windows.h>
#include <mshtml.h>
#include <optional>

#include "locate/screen_area.h"
#include "session/session.h"

namespace quillmate {

/// @return the element's bounding rectangle in client pixels of its document; nothing when it cannot be
/// measured (an element outside the page's tree).
std::optional<Rectangle> ReadClientRect(IHTMLElement* element);

/// @param document the current frame's document.
/// @return its area on the screen, visible through all its frames; nothing when a level cannot be measured.
std::optional<DocumentArea> GetDocumentScreenArea(Session& session, IHTMLDocument2* document);

}  // namespace quillmate
