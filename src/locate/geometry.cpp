#include "locate/geometry.h"

#include "api/messages.h"
#include "locate/current_page.h"
#include "locate/document_area.h"

namespace quillmate {
namespace {

/// @return the element's place; nothing when it or its document cannot be measured.
std::optional<ElementOnScreen> GetElementOnScreen(Session& session, const FramePath& page,
                                                  IHTMLElement* element) {
  const auto rectangle = ReadClientRect(element);
  if (!rectangle) return std::nullopt;
  const auto area = GetDocumentScreenArea(session, page);
  if (!area) return std::nullopt;
  const Rectangle on_screen = Translated(*rectangle, {area->origin.left, area->origin.top});
  return ElementOnScreen{on_screen, IsInside(on_screen, area->visible)};
}

}  // namespace

bool ScrollElementIntoView(IHTMLElement* element) {
  // 1, not the all-ones VARIANT_TRUE: the page must see the value that it always got.
  VARIANT align_to_top;
  VariantInit(&align_to_top);
  align_to_top.vt = VT_BOOL;
  align_to_top.boolVal = 1;
  return SUCCEEDED(element->scrollIntoView(align_to_top));
}

std::optional<ElementOnScreen> GetElementScrolledIntoView(Session& session, const FramePath& page,
                                                          IHTMLElement* element) {
  const auto place = GetElementOnScreen(session, page, element);
  if (place && place->fully_visible) return place;
  if (!ScrollElementIntoView(element)) return std::nullopt;
  return GetElementOnScreen(session, page, element);
}

std::optional<ScreenPoint> GetElementCenterPoint(Session& session, const FramePath& page,
                                                 IHTMLElement* element) {
  const auto place = GetElementOnScreen(session, page, element);
  if (!place) return std::nullopt;
  const ScreenPoint center = CenterOf(place->rectangle);
  if (place->fully_visible) return center;
  if (!ScrollElementIntoView(element)) return std::nullopt;
  // Deliberate: the center from before the scroll is used. It only has to lie in what is visible now.
  const auto area = GetDocumentScreenArea(session, page);
  return area && IsInside(center, area->visible) ? std::optional(center) : std::nullopt;
}

OrFailure<ScreenPoint> GetElementClickPoint(Session& session, IHTMLElement* element) {
  const auto page = BringPageToTop(session, element);
  if (!page) return std::unexpected(page.error());
  const auto point = GetElementCenterPoint(session, *page, element);
  if (!point) return Failed(messages::kFailedToScrollTheElementToTheView);
  return *point;
}

OrFailure<Rectangle> GetElementRectOrFail(Session& session, IHTMLElement* element) {
  const auto page = BringPageToTop(session, element);
  if (!page) return std::unexpected(page.error());
  const auto place = GetElementScrolledIntoView(session, *page, element);
  if (!place || !place->fully_visible) return Failed(messages::kFailedToScrollTheElementToTheView);
  return place->rectangle;
}

}  // namespace quillmate
