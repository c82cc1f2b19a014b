// From an element of the current frame's document to where it is on the screen, through every frame around
// it.
#pragma once

#include <windows.h>
#include <mshtml.h>
#include <expected>
#include <optional>

#include "api/result.h"
#include "com/com_ptr.h"
#include "locate/screen_area.h"

namespace quillmate::locate {

/// @return the element's bounding rectangle in client pixels of its document; nothing when it cannot be
/// measured
///         (an element outside the page's tree).
std::optional<Rectangle> GetClientRect(IHTMLElement* element);

/// @return the size of a document's view: of its body in quirks layout, else of its document element.
std::optional<ViewportSize> GetViewportSize(IHTMLDocument2* document);

/// @param document the current frame's document.
/// @return its area on the screen, visible through all its frames; nothing when a level cannot be measured.
std::optional<DocumentArea> GetDocumentScreenArea(IHTMLDocument2* document);

/// Where an element is on the screen.
struct ElementOnScreen {
  Rectangle rectangle;
  bool fully_visible = false;
};

/// @return the element's place; nothing when it or its document cannot be measured.
std::optional<ElementOnScreen> GetElementOnScreen(IHTMLDocument2* document, IHTMLElement* element);

/// @return whether the page accepted the call.
bool ScrollElementIntoView(IHTMLElement* element);

/// Measures an element; when it is not fully visible, scrolls it into view and measures it again.
/// @return its last measured place; nothing when it can be neither measured nor scrolled.
std::optional<ElementOnScreen> GetElementScrolledIntoView(IHTMLDocument2* document, IHTMLElement* element);

/// @return the element's rectangle, fully visible after a scroll if one was needed; nothing otherwise.
std::optional<Rectangle> GetVisibleElementRect(IHTMLDocument2* document, IHTMLElement* element);

/// The point that pointer input aims at: the middle of the element as it was measured before any scroll.
/// @return the point when it lies in the document's visible area; nothing otherwise.
std::optional<ScreenPoint> GetElementCenterPoint(IHTMLDocument2* document, IHTMLElement* element);

/// Checks that the current target can be used for an element, and brings it to the top.
/// @return the current frame's document, "Element not found!" or "Switch tab failed!".
std::expected<com::ComPtr<IHTMLDocument2>, api::Failure> BringPageToTop(IHTMLElement* element);

/// Brings the page to the top and gives the element's centre point.
/// @return the point; else the failures of BringPageToTop or "Failed to scroll the element to the view!".
std::expected<ScreenPoint, api::Failure> GetElementClickPoint(IHTMLElement* element);

/// Brings the page to the top and gives the element's fully visible rectangle.
/// @return the rectangle; else the failures of GetElementClickPoint.
std::expected<Rectangle, api::Failure> GetElementRectOrFail(IHTMLElement* element);

}  // namespace quillmate::locate
