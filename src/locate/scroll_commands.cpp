// The commands that move a page's view and that tell where an element is.
#include <string>

#include "api/messages.h"
#include "api/validation.h"
#include "com/bstr.h"
#include "commands.h"
#include "locate/element_search.h"
#include "locate/frames.h"
#include "locate/geometry.h"
#include "session/current_page.h"

namespace quillmate {
namespace {

Result Outcome(HRESULT result) { return SUCCEEDED(result) ? Done() : Fail(messages::kScrollFailed); }

Result ScrollViewTo(IHTMLDocument2* document, CoordinatePair position) {
  const auto window = GetParentWindow(document);
  return window != nullptr ? Outcome(window->scrollTo(position.x, position.y))
                           : Fail(messages::kScrollFailed);
}

/// Whether scrolling this element scrolls the page: HTML or BODY, in any layout mode.
bool IsPageRoot(IHTMLElement* element) {
  com::Bstr tag;
  return SUCCEEDED(element->get_tagName(tag.put())) && (tag.view() == L"HTML" || tag.view() == L"BODY");
}

bool ShowsOverflow(IHTMLElement2* element) {
  com::ComPtr<IHTMLCurrentStyle> style;
  com::Bstr overflow;
  return SUCCEEDED(element->get_currentStyle(&style)) && style != nullptr &&
         SUCCEEDED(style->get_overflow(overflow.put())) && overflow.view() == L"visible";
}

bool HasMoreThanItShows(IHTMLElement2* element) {
  LONG content = 0;
  LONG shown = 0;
  if (FAILED(element->get_scrollHeight(&content)) || FAILED(element->get_clientHeight(&shown))) return false;
  if (content > shown) return true;
  return SUCCEEDED(element->get_scrollWidth(&content)) && SUCCEEDED(element->get_clientWidth(&shown)) &&
         content > shown;
}

Result ScrollElementTo(IHTMLElement* element, CoordinatePair position) {
  const auto scrolled = com::Query<IHTMLElement2>(element);
  if (scrolled == nullptr || ShowsOverflow(scrolled.Get()) || !HasMoreThanItShows(scrolled.Get())) {
    return Fail(messages::kTargetNotSupportScrollPleaseCheck);
  }
  const HRESULT across = scrolled->put_scrollLeft(position.x);
  return Outcome(FAILED(across) ? across : scrolled->put_scrollTop(position.y));
}

ScreenPoint PointOf(const Rectangle& rectangle, std::string_view area) {
  if (area == "left-top") return {rectangle.left, rectangle.top};
  if (area == "right-bottom") return {rectangle.right, rectangle.bottom};
  return CenterOf(rectangle);
}

}  // namespace

Result Scroll(Session& session, const CommandParams& params) {
  const auto distance = Coordinates(params);
  if (!distance) return distance.error();
  const auto document = GetFrameDocument(session);
  if (document == nullptr) return Fail(messages::kFrameNotFound);
  const auto window = GetParentWindow(document.Get());
  return window != nullptr ? Outcome(window->scrollBy(distance->x, distance->y))
                           : Fail(messages::kScrollFailed);
}

Result ScrollTo(Session& session, const CommandParams& params) {
  const auto position = Coordinates(params);
  if (!position) return position.error();
  const auto target = OptionalLocator(params, "target");
  if (!target) return target.error();
  const auto document = GetFrameDocument(session);
  if (document == nullptr) return Fail(messages::kFrameNotFound);
  if (target->empty()) return ScrollViewTo(document.Get(), *position);
  const auto element = FindElement(session, *target);
  if (!element) return element.error();
  if (IsPageRoot(element->Get())) return ScrollViewTo(document.Get(), *position);
  return ScrollElementTo(element->Get(), *position);
}

Result ScrollIntoView(Session& session, const CommandParams& params) {
  const auto element = ResolveTargetElement(session, params);
  if (!element) return element.error();
  const auto document = BringPageToTop(session, element->Get());
  if (!document) return document.error();
  return ScrollElementIntoView(element->Get()) ? Done() : Fail(messages::kScrollIntoViewFailed);
}

Result GetElementPos(Session& session, const CommandParams& params) {
  const auto target = Locator(params);
  if (!target) return target.error();
  const std::string area = params.Get("area");
  if (!IsArea(area)) return Fail(messages::kInvalidArea);
  const auto element = FindElement(session, *target);
  if (!element) return element.error();
  const auto document = GetFrameDocument(session);
  if (document == nullptr) return Fail(messages::kElementNotFound);
  const auto place = GetElementScrolledIntoView(session, document.Get(), element->Get());
  if (!place) return Fail(messages::kGetElementposFailed);
  if (!place->fully_visible) return Fail(messages::kTheElementIsNotFullyVisibleOnTheBrowser);
  const ScreenPoint point = PointOf(place->rectangle, area);
  return Text(std::to_string(point.x) + "," + std::to_string(point.y));
}

}  // namespace quillmate
