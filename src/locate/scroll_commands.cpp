// The commands that move a page's view and that tell where an element is.
#include <string>

#include "api/messages.h"
#include "api/validation.h"
#include "com/call_limit.h"
#include "com/owned.h"
#include "commands.h"
#include "locate/current_page.h"
#include "locate/frames.h"
#include "locate/geometry.h"

namespace quillmate {
namespace {

Result Outcome(HRESULT result) { return SUCCEEDED(result) ? Done() : Fail(messages::kScrollFailed); }

Result ScrollViewTo(IHTMLDocument2* document, CoordinatePair position) {
  const auto window = GetParentWindow(document);
  return window != nullptr ? Outcome(window->scrollTo(position.x, position.y))
                           : Fail(messages::kScrollFailed);
}

/// @return S_OK when scrolling this element scrolls the page (HTML or BODY, in any layout mode), S_FALSE when
/// not, else why it cannot tell.
HRESULT IsPageRoot(IHTMLElement* element) {
  com::Bstr tag;
  const HRESULT result = element->get_tagName(tag.put());
  if (FAILED(result)) return result;
  return tag.view() == L"HTML" || tag.view() == L"BODY" ? S_OK : S_FALSE;
}

HRESULT ShowsOverflow(IHTMLElement2* element) {
  com::ComPtr<IHTMLCurrentStyle> style;
  com::Bstr overflow;
  HRESULT result = element->get_currentStyle(&style);
  if (SUCCEEDED(result)) result = style != nullptr ? style->get_overflow(overflow.put()) : E_FAIL;
  if (FAILED(result)) return result;
  return overflow.view() == L"visible" ? S_OK : S_FALSE;
}

HRESULT HasMoreThanItShows(IHTMLElement2* element) {
  LONG content = 0;
  LONG shown = 0;
  HRESULT result = element->get_scrollHeight(&content);
  if (SUCCEEDED(result)) result = element->get_clientHeight(&shown);
  if (FAILED(result) || content > shown) return result;
  result = element->get_scrollWidth(&content);
  if (SUCCEEDED(result)) result = element->get_clientWidth(&shown);
  if (FAILED(result)) return result;
  return content > shown ? S_OK : S_FALSE;
}

/// @return S_OK when the element has a view of its own with more in it, S_FALSE when not, else why it cannot
/// tell.
HRESULT IsScrollable(IHTMLElement2* element) {
  const HRESULT shows_overflow = ShowsOverflow(element);
  if (FAILED(shows_overflow)) return shows_overflow;
  return shows_overflow == S_OK ? S_FALSE : HasMoreThanItShows(element);
}

Result ScrollElementTo(IHTMLElement* element, CoordinatePair position) {
  com::ComPtr<IHTMLElement2> scrolled;
  HRESULT result = com::QueryKnown(element, scrolled);
  if (SUCCEEDED(result)) result = IsScrollable(scrolled.Get());
  if (result == S_FALSE) return Fail(messages::kTargetNotSupportScrollPleaseCheck);
  if (SUCCEEDED(result)) result = scrolled->put_scrollLeft(position.x);
  if (SUCCEEDED(result)) result = scrolled->put_scrollTop(position.y);
  return Outcome(result);
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
  const auto page = WalkFrames(session);
  if (!page) return Fail(messages::kFrameNotFound);
  IHTMLDocument2* document = page->back().document.Get();
  if (target->empty()) return ScrollViewTo(document, *position);
  const auto element = FindElement(session, page, *target);
  if (!element) return element.error();
  const HRESULT is_root = IsPageRoot(element->Get());
  if (FAILED(is_root)) return Fail(messages::kScrollFailed);
  return is_root == S_OK ? ScrollViewTo(document, *position) : ScrollElementTo(element->Get(), *position);
}

Result ScrollIntoView(Session& session, const CommandParams& params) {
  const auto element = ResolveTargetElement(session, params);
  if (!element) return element.error();
  const auto page = BringPageToTop(session, element->Get());
  if (!page) return page.error();
  return ScrollElementIntoView(element->Get()) ? Done() : Fail(messages::kScrollIntoViewFailed);
}

Result GetElementPos(Session& session, const CommandParams& params) {
  const auto target = Locator(params);
  if (!target) return target.error();
  const std::string area = params.Get("area");
  if (!IsArea(area)) return Fail(messages::kInvalidArea);
  const auto page = WalkFrames(session);
  const auto element = FindElement(session, page, *target);
  if (!element) return element.error();
  if (!page) return Fail(messages::kElementNotFound);
  const auto place = GetElementScrolledIntoView(session, *page, element->Get());
  if (!place) return Fail(messages::kGetElementposFailed);
  if (!place->fully_visible) return Fail(messages::kTheElementIsNotFullyVisibleOnTheBrowser);
  const ScreenPoint point = PointOf(place->rectangle, area);
  return Text(std::to_string(point.x) + "," + std::to_string(point.y));
}

}  // namespace quillmate
