// From an element of the current frame's document to where it is on the screen, through every frame around
// it.
#pragma once

#include <windows.h>
#include <mshtml.h>
#include <optional>

#include "api/result.h"
#include "com/owned.h"
#include "locate/frames.h"
#include "locate/screen_area.h"
#include "session/session.h"

namespace quillmate {

/// Where an element is on the screen.
struct ElementOnScreen {
  Rectangle rectangle;
  bool fully_visible = false;
};

/// @return whether the page accepted the call.
bool ScrollElementIntoView(IHTMLElement* element);

/// Measures an element; when it is not fully visible, scrolls it into view and measures it again.
/// @return its last measured place; nothing when it can be neither measured nor scrolled.
std::optional<ElementOnScreen> GetElementScrolledIntoView(Session& session, const FramePath& page,
                                                          IHTMLElement* element);

/// The point that pointer input aims at: the middle of the element as it was measured before any scroll.
/// @return the point when it lies in the document's visible area; nothing otherwise.
std::optional<ScreenPoint> GetElementCenterPoint(Session& session, const FramePath& page,
                                                 IHTMLElement* element);

/// Brings the page to the top and gives the element's center point.
/// @return the point; else the failures of BringPageToTop or "Failed to scroll the element to the view!".
OrFailure<ScreenPoint> GetElementClickPoint(Session& session, IHTMLElement* element);

/// Brings the page to the top and gives the element's fully visible rectangle.
/// @return the rectangle; else the failures of GetElementClickPoint.
OrFailure<Rectangle> GetElementRectOrFail(Session& session, IHTMLElement* element);

}  // namespace quillmate
