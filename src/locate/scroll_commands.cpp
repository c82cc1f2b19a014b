// The commands that move a page's view and that tell where an element is.
#include <string>

#include "api/messages.h"
#include "api/validation.h"
#include "com/bstr.h"
#include "locate/commands.h"
#include "locate/element_search.h"
#include "locate/frames.h"
#include "locate/geometry.h"

namespace quillmate::locate {
namespace {

using api::CommandParams;
using api::Fail;
using api::Result;
using com::ComPtr;
namespace messages = api::messages;

Result Outcome(HRESULT result) { return SUCCEEDED(result) ? api::Done() : Fail(messages::kScrollFailed); }

ComPtr<IHTMLWindow2> WindowOf(IHTMLDocument2* document) {
  ComPtr<IHTMLWindow2> window;
  document->get_parentWindow(&window);
  return window;
}

Result ScrollViewTo(IHTMLDocument2* document, api::CoordinatePair position) {
  const auto window = WindowOf(document);
  return window != nullptr ? Outcome(window->scrollTo(position.x, position.y))
                           : Fail(messages::kScrollFailed);
}

/// Whether an element is what the document's view scrolls by, whatever the layout mode makes of either.
bool IsPageRoot(IHTMLElement* element) {
  com::Bstr tag;
  return SUCCEEDED(element->get_tagName(tag.put())) && (tag.view() == L"HTML" || tag.view() == L"BODY");
}

bool ShowsOverflow(IHTMLElement2* element) {
  ComPtr<IHTMLCurrentStyle> style;
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

Result ScrollElementTo(IHTMLElement* element, api::CoordinatePair position) {
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

Result Scroll(const CommandParams& params) {
  const auto distance = api::ParseCoordinatePair(params.Get("value"));
  if (!distance) return Fail(messages::kInvalidCoordinate);
  const auto document = GetFrameDocument();
  if (document == nullptr) return Fail(messages::kFrameNotFound);
  const auto window = WindowOf(document.Get());
  return window != nullptr ? Outcome(window->scrollBy(distance->x, distance->y))
                           : Fail(messages::kScrollFailed);
}

Result ScrollTo(const CommandParams& params) {
  const auto position = api::ParseCoordinatePair(params.Get("value"));
  if (!position) return Fail(messages::kInvalidCoordinate);
  const std::string target = params.Get("target");
  if (!target.empty() && !api::IsElementLocator(target)) return Fail(messages::kInvalidElementLocator);
  const auto document = GetFrameDocument();
  if (document == nullptr) return Fail(messages::kFrameNotFound);
  if (target.empty()) return ScrollViewTo(document.Get(), *position);
  const auto element = FindElement(target);
  if (!element) return element.error();
  if (IsPageRoot(element->Get())) return ScrollViewTo(document.Get(), *position);
  return ScrollElementTo(element->Get(), *position);
}

Result ScrollIntoView(const CommandParams& params) {
  const auto element = ResolveTargetElement(params);
  if (!element) return element.error();
  const auto document = BringPageToTop(element->Get());
  if (!document) return document.error();
  return ScrollElementIntoView(element->Get()) ? api::Done() : Fail(messages::kScrollIntoViewFailed);
}

Result GetElementPos(const CommandParams& params) {
  const std::string target = params.Get("target");
  if (!api::IsElementLocator(target)) return Fail(messages::kInvalidElementLocator);
  const std::string area = params.Get("area");
  if (!api::IsArea(area)) return Fail(messages::kInvalidArea);
  const auto element = FindElement(target);
  if (!element) return element.error();
  const auto document = GetFrameDocument();
  if (document == nullptr) return Fail(messages::kElementNotFound);
  const auto place = GetElementScrolledIntoView(document.Get(), element->Get());
  if (!place) return Fail(messages::kGetElementposFailed);
  if (!place->fully_visible) return Fail(messages::kTheElementIsNotFullyVisibleOnTheBrowser);
  const ScreenPoint point = PointOf(place->rectangle, area);
  return api::Text(std::to_string(point.x) + "," + std::to_string(point.y));
}

}  // namespace quillmate::locate
