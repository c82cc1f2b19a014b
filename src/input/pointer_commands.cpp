// The commands that click and move with the real pointer. What was pressed when a command fails stays
// pressed, on purpose: a host that saw the failure decides what to release.
#include <cstdint>
#include <string>

#include "api/messages.h"
#include "api/validation.h"
#include "input/commands.h"
#include "input/element_keys.h"
#include "input/pointer.h"
#include "locate/element_search.h"
#include "locate/geometry.h"

namespace quillmate::input {
namespace {

using api::CommandParams;
using api::CoordinatePair;
using api::Fail;
using api::Failure;
using api::Result;
using com::ComPtr;
namespace messages = api::messages;

/// Screen coordinates wrap at 32 bits like the system's own.
ScreenPoint OffsetBy(ScreenPoint point, CoordinatePair offset) {
  const auto sum = [](int a, int b) {
    return static_cast<int>(static_cast<unsigned>(a) + static_cast<unsigned>(b));
  };
  return {sum(point.x, offset.x), sum(point.y, offset.y)};
}

/// Puts the cursor on the element named by "target" and lets a button act there.
Result ActOnTarget(const CommandParams& params, void (*act)(), const char* failure) {
  const auto element = locate::ResolveTargetElement(params);
  if (!element) return element.error();
  const auto point = locate::GetElementClickPoint(element->Get());
  if (!point) return point.error();
  if (!PlaceCursor(*point)) return Fail(failure);
  act();
  return api::Done();
}

Result MoveByOffset(CoordinatePair offset) {
  POINT cursor;
  if (!GetCursorPos(&cursor)) return Fail(messages::kGetCursorPosFailed);
  const ScreenPoint start{static_cast<int>(cursor.x), static_cast<int>(cursor.y)};
  return HumanMouseMove(OffsetBy(start, offset)) ? api::Done() : Fail(messages::kMoveByOffsetFailed);
}

Result MoveToElementWithOffset(IHTMLElement* element, CoordinatePair offset) {
  const auto center = locate::GetElementClickPoint(element);
  if (!center) return center.error();
  return HumanMouseMove(OffsetBy(*center, offset)) ? api::Done()
                                                   : Fail(messages::kMoveToElementWithOffsetFailed);
}

/// Drags from the cursor's place, where the button goes down, to an element's centre.
Result DragOnto(IHTMLDocument2* document, IHTMLElement* source, IHTMLElement* destination) {
  const auto from = locate::GetElementCenterPoint(document, source);
  if (!from || !PlaceCursor(*from)) return Fail(messages::kDragAndDropFailed);
  PressLeft();
  const auto to = locate::GetElementCenterPoint(document, destination);
  // The button stays down on purpose when there is nowhere to drop.
  if (!to) return Fail(messages::kDragAndDropFailed);
  HumanMouseMove(*to);
  ReleaseLeft();
  return api::Done();
}

Result DragToElement(const CommandParams& params, const char* destination_key) {
  const std::string target = params.Get("target");
  const std::string destination = params.Get(destination_key);
  if (!api::IsElementLocator(target) || !api::IsElementLocator(destination)) {
    return Fail(messages::kInvalidElementLocator);
  }
  const auto from = locate::FindElement(target);
  if (!from) return from.error();
  const auto to = locate::FindElement(destination);
  if (!to) return to.error();
  const auto document = locate::BringPageToTop(from->Get());
  if (!document) return document.error();
  return DragOnto(document->Get(), from->Get(), to->Get());
}

Result DragByOffset(IHTMLElement* source, CoordinatePair offset) {
  const auto center = locate::GetElementClickPoint(source);
  if (!center) return center.error();
  if (!PlaceCursor(*center)) return Fail(messages::kDragAndDropFailed);
  PressLeft();
  HumanMouseMove(OffsetBy(*center, offset));
  ReleaseLeft();
  return api::Done();
}

}  // namespace

Result SendKeys(const CommandParams& params) {
  const std::string target = params.Get("target");
  if (!api::IsElementLocator(target)) return Fail(messages::kInvalidElementLocator);
  const std::string keys = params.Get("value");
  if (!api::IsTextValue(keys)) return Fail(messages::kInvalidParameter);
  const auto element = locate::FindElement(target);
  if (!element) return element.error();
  const auto failure = SendKeysToElement(com::Query<IHTMLElement2>(*element).Get(), {keys});
  return failure ? Result(*failure) : api::Done();
}

Result ClickAndHold(const CommandParams& params) {
  return ActOnTarget(params, PressLeft, messages::kClickAndHoldFailed);
}

Result Release(const CommandParams& params) {
  return ActOnTarget(params, ReleaseLeft, messages::kReleaseFailed);
}

Result DoubleClick(const CommandParams& params) {
  return ActOnTarget(params, ClickLeftTwice, messages::kDoubleClickFailed);
}

Result RightClick(const CommandParams& params) {
  return ActOnTarget(params, ClickRight, messages::kRightClickFailed);
}

Result MoveByOffset(const CommandParams& params) {
  const auto offset = api::ParseCoordinatePair(params.Get("value"));
  return offset ? MoveByOffset(*offset) : Fail(messages::kInvalidCoordinate);
}

Result MoveToElement(const CommandParams& params) {
  const auto element = locate::ResolveTargetElement(params);
  if (!element) return element.error();
  const auto document = locate::BringPageToTop(element->Get());
  if (!document) return document.error();
  // Any place will do here, fully visible or not, so this is the new centre after a scroll, not the old one.
  const auto place = locate::GetElementScrolledIntoView(document->Get(), element->Get());
  if (!place) return Fail(messages::kFailedToScrollTheElementToTheView);
  return HumanMouseMove(locate::CenterOf(place->rectangle)) ? api::Done()
                                                            : Fail(messages::kMoveToElementFailed);
}

Result MoveToElementWithOffset(const CommandParams& params) {
  const std::string target = params.Get("target");
  if (!api::IsElementLocator(target)) return Fail(messages::kInvalidElementLocator);
  const auto offset = api::ParseCoordinatePair(params.Get("value"));
  if (!offset) return Fail(messages::kInvalidCoordinate);
  const auto element = locate::FindElement(target);
  return element ? MoveToElementWithOffset(element->Get(), *offset) : Result(element.error());
}

Result Move(const CommandParams& params) {
  const std::string value = params.Get("value");
  const auto offset = value.empty() ? CoordinatePair{0, 0} : api::ParseCoordinatePair(value);
  if (!offset) return Fail(messages::kInvalidCoordinate);
  if (params.Get("target").empty()) return MoveByOffset(*offset);
  const auto element = locate::ResolveTargetElement(params);
  return element ? MoveToElementWithOffset(element->Get(), *offset) : Result(element.error());
}

Result DragAndDrop(const CommandParams& params) { return DragToElement(params, "value"); }

Result DragAndDropByOffset(const CommandParams& params) {
  const std::string target = params.Get("target");
  if (!api::IsElementLocator(target)) return Fail(messages::kInvalidElementLocator);
  const auto offset = api::ParseCoordinatePair(params.Get("value"));
  if (!offset) return Fail(messages::kInvalidCoordinate);
  const auto element = locate::FindElement(target);
  return element ? DragByOffset(element->Get(), *offset) : Result(element.error());
}

Result DragDrop(const CommandParams& params) {
  const std::string type = params.Get("dest-type");
  if (type == "element") return DragToElement(params, "dest-element");
  if (type != "pos") return Fail(messages::kInvalidCoordinate);
  const auto offset = api::ParseCoordinatePair(params.Get("dest-pos"));
  if (!offset) return Fail(messages::kInvalidCoordinate);
  const auto element = locate::ResolveTargetElement(params);
  return element ? DragByOffset(element->Get(), *offset) : Result(element.error());
}

Result ActionChains(const CommandParams&) { return api::Done(); }

}  // namespace quillmate::input
