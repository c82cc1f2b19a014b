// Elements on the screen: measured, scrolled into view, and aimed at.
#include "locate/geometry.h"

#include "api/messages.h"
#include "locate/frames.h"
#include "session/current_target.h"

namespace quillmate::locate {

using com::ComPtr;
namespace messages = api::messages;

std::optional<Rectangle> GetClientRect(IHTMLElement* element) {
  const auto placed = com::Query<IHTMLElement2>(element);
  ComPtr<IHTMLRect> bounds;
  if (placed == nullptr || FAILED(placed->getBoundingClientRect(&bounds)) || bounds == nullptr)
    return std::nullopt;
  LONG left = 0;
  LONG top = 0;
  LONG right = 0;
  LONG bottom = 0;
  if (FAILED(bounds->get_left(&left)) || FAILED(bounds->get_top(&top)) || FAILED(bounds->get_right(&right)) ||
      FAILED(bounds->get_bottom(&bottom))) {
    return std::nullopt;
  }
  return Rectangle{static_cast<int>(left), static_cast<int>(top), static_cast<int>(right),
                   static_cast<int>(bottom)};
}

std::optional<ElementOnScreen> GetElementOnScreen(IHTMLDocument2* document, IHTMLElement* element) {
  const auto rectangle = GetClientRect(element);
  if (!rectangle) return std::nullopt;
  const auto area = GetDocumentScreenArea(document);
  if (!area) return std::nullopt;
  const Rectangle on_screen = Translated(*rectangle, {area->origin.left, area->origin.top});
  return ElementOnScreen{on_screen, IsInside(on_screen, area->visible)};
}

bool ScrollElementIntoView(IHTMLElement* element) {
  // 1, not the all-ones VARIANT_TRUE: the page must see the value that it always got.
  VARIANT align_to_top;
  VariantInit(&align_to_top);
  align_to_top.vt = VT_BOOL;
  align_to_top.boolVal = 1;
  return SUCCEEDED(element->scrollIntoView(align_to_top));
}

std::optional<ElementOnScreen> GetElementScrolledIntoView(IHTMLDocument2* document, IHTMLElement* element) {
  const auto place = GetElementOnScreen(document, element);
  if (place && place->fully_visible) return place;
  if (!ScrollElementIntoView(element)) return std::nullopt;
  return GetElementOnScreen(document, element);
}

std::optional<Rectangle> GetVisibleElementRect(IHTMLDocument2* document, IHTMLElement* element) {
  const auto place = GetElementScrolledIntoView(document, element);
  return place && place->fully_visible ? std::optional(place->rectangle) : std::nullopt;
}

std::optional<ScreenPoint> GetElementCenterPoint(IHTMLDocument2* document, IHTMLElement* element) {
  const auto place = GetElementOnScreen(document, element);
  if (!place) return std::nullopt;
  const ScreenPoint center = CenterOf(place->rectangle);
  if (place->fully_visible) return center;
  if (!ScrollElementIntoView(element)) return std::nullopt;
  // The centre from before the scroll is used on purpose; it only has to lie in what is visible now.
  const auto area = GetDocumentScreenArea(document);
  return area && IsInside(center, area->visible) ? std::optional(center) : std::nullopt;
}

std::expected<ComPtr<IHTMLDocument2>, api::Failure> BringPageToTop(IHTMLElement* element) {
  auto document = GetFrameDocument();
  if (element == nullptr || document == nullptr)
    return std::unexpected(api::Failure{messages::kElementNotFound});
  session::WindowHolder* holder = session::ValidHolder();
  if (holder == nullptr || !holder->BringToTop())
    return std::unexpected(api::Failure{messages::kSwitchTabFailed});
  return document;
}

std::expected<ScreenPoint, api::Failure> GetElementClickPoint(IHTMLElement* element) {
  const auto document = BringPageToTop(element);
  if (!document) return std::unexpected(document.error());
  const auto point = GetElementCenterPoint(document->Get(), element);
  if (!point) return std::unexpected(api::Failure{messages::kFailedToScrollTheElementToTheView});
  return *point;
}

std::expected<Rectangle, api::Failure> GetElementRectOrFail(IHTMLElement* element) {
  const auto document = BringPageToTop(element);
  if (!document) return std::unexpected(document.error());
  const auto rectangle = GetVisibleElementRect(document->Get(), element);
  if (!rectangle) return std::unexpected(api::Failure{messages::kFailedToScrollTheElementToTheView});
  return *rectangle;
}

}  // namespace quillmate::locate
