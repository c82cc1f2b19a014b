// The commands that click and move with the real pointer. Deliberate: what was pressed when a command fails
// stays pressed. A host that saw the failure decides what to release.
#include <cstdint>
#include <string>

#include "api/messages.h"
#include "commands.h"
#include "dom/element_keys.h"
#include "input/synthesized_input.h"
#include "locate/current_page.h"
#include "locate/geometry.h"

namespace quillmate {
namespace {

/// Screen coordinates wrap at 32 bits like the system's own.
ScreenPoint OffsetBy(ScreenPoint point, CoordinatePair offset) {
  const auto sum = [](int a, int b) {
    return static_cast<int>(static_cast<unsigned>(a) + static_cast<unsigned>(b));
  };
  return {sum(point.x, offset.x), sum(point.y, offset.y)};
}

/// Puts the cursor on the element named by "target" and lets a button act there.
Result ActOnTarget(Session& session, const CommandParams& params, void (*act)(), const char* failure) {
  const auto element = ResolveTargetElement(session, params);
  if (!element) return element.error();
  const auto point = GetElementClickPoint(session, element->Get());
  if (!point) return point.error();
  if (!PlaceCursor(*point)) return Fail(failure);
  act();
  AwaitMouseTaken();
  return Done();
}

bool MoveTo(ScreenPoint point) {
  const bool moved = HumanMouseMove(point);
  AwaitMouseTaken();
  return moved;
}

Result MoveCursorBy(CoordinatePair offset) {
  POINT cursor;
  if (!GetCursorPos(&cursor)) return Fail(messages::kGetCursorPosFailed);
  const ScreenPoint start{static_cast<int>(cursor.x), static_cast<int>(cursor.y)};
  return MoveTo(OffsetBy(start, offset)) ? Done() : Fail(messages::kMoveByOffsetFailed);
}

Result MoveCursorNear(Session& session, IHTMLElement* element, CoordinatePair offset) {
  const auto center = GetElementClickPoint(session, element);
  if (!center) return center.error();
  return MoveTo(OffsetBy(*center, offset)) ? Done() : Fail(messages::kMoveToElementWithOffsetFailed);
}

/// Drags from the cursor's place, where the button goes down, to an element's center.
Result DragOnto(Session& session, const FramePath& page, IHTMLElement* source, IHTMLElement* destination) {
  const auto from = GetElementCenterPoint(session, page, source);
  if (!from || !PlaceCursor(*from)) return Fail(messages::kDragAndDropFailed);
  PressLeft();
  const auto to = GetElementCenterPoint(session, page, destination);
  // Deliberate: the button stays down when there is nowhere to drop.
  if (!to) return Fail(messages::kDragAndDropFailed);
  HumanMouseMove(*to);
  ReleaseLeft();
  AwaitMouseTaken();
  return Done();
}

Result DragToElement(Session& session, const CommandParams& params, const char* destination_key) {
  const auto target = Locator(params);
  if (!target) return target.error();
  const auto destination = Locator(params, destination_key);
  if (!destination) return destination.error();
  const auto from = FindElement(session, *target);
  if (!from) return from.error();
  const auto to = FindElement(session, *destination);
  if (!to) return to.error();
  const auto page = BringPageToTop(session, from->Get());
  if (!page) return page.error();
  return DragOnto(session, *page, from->Get(), to->Get());
}

Result DragByOffset(Session& session, IHTMLElement* source, CoordinatePair offset) {
  const auto center = GetElementClickPoint(session, source);
  if (!center) return center.error();
  if (!PlaceCursor(*center)) return Fail(messages::kDragAndDropFailed);
  PressLeft();
  HumanMouseMove(OffsetBy(*center, offset));
  ReleaseLeft();
  AwaitMouseTaken();
  return Done();
}

}  // namespace

Result SendKeys(Session& session, const CommandParams& params) {
  const auto target = Locator(params);
  if (!target) return target.error();
  const auto keys = TextValue(params);
  if (!keys) return keys.error();
  const auto element = FindElement(session, *target);
  // Deliberate: not the search's own message, which tells the step of a path.
  if (!element) return Fail(messages::kElementNotFound);
  const auto pressed = PressKeysOnElement(session, element->Get(), {*keys});
  return pressed ? Done() : Result(pressed.error());
}

/// Does nothing: hosts that collect actions end their chain with it.
Result ActionChains(Session&, const CommandParams&) { return Done(); }

Result ClickAndHold(Session& session, const CommandParams& params) {
  return ActOnTarget(session, params, PressLeft, messages::kClickAndHoldFailed);
}

Result Release(Session& session, const CommandParams& params) {
  return ActOnTarget(session, params, ReleaseLeft, messages::kReleaseFailed);
}

Result DoubleClick(Session& session, const CommandParams& params) {
  return ActOnTarget(session, params, ClickLeftTwice, messages::kDoubleClickFailed);
}

Result RightClick(Session& session, const CommandParams& params) {
  return ActOnTarget(session, params, ClickRight, messages::kRightClickFailed);
}

Result MoveByOffset(Session&, const CommandParams& params) {
  const auto offset = Coordinates(params);
  return offset ? MoveCursorBy(*offset) : Result(offset.error());
}

Result MoveToElement(Session& session, const CommandParams& params) {
  const auto element = ResolveTargetElement(session, params);
  if (!element) return element.error();
  const auto page = BringPageToTop(session, element->Get());
  if (!page) return page.error();
  // Any place will do here, fully visible or not, so this is the new center after a scroll, not the old one.
  const auto place = GetElementScrolledIntoView(session, *page, element->Get());
  if (!place) return Fail(messages::kFailedToScrollTheElementToTheView);
  return MoveTo(CenterOf(place->rectangle)) ? Done() : Fail(messages::kMoveToElementFailed);
}

Result MoveToElementWithOffset(Session& session, const CommandParams& params) {
  const auto target = Locator(params);
  if (!target) return target.error();
  const auto offset = Coordinates(params);
  if (!offset) return offset.error();
  const auto element = FindElement(session, *target);
  return element ? MoveCursorNear(session, element->Get(), *offset) : Result(element.error());
}

Result Move(Session& session, const CommandParams& params) {
  const auto offset = params.Get("value").empty() ? CoordinatePair{0, 0} : Coordinates(params);
  if (!offset) return offset.error();
  if (params.Get("target").empty()) return MoveCursorBy(*offset);
  const auto element = ResolveTargetElement(session, params);
  return element ? MoveCursorNear(session, element->Get(), *offset) : Result(element.error());
}

Result DragAndDrop(Session& session, const CommandParams& params) {
  return DragToElement(session, params, "value");
}

Result DragAndDropByOffset(Session& session, const CommandParams& params) {
  const auto target = Locator(params);
  if (!target) return target.error();
  const auto offset = Coordinates(params);
  if (!offset) return offset.error();
  const auto element = FindElement(session, *target);
  return element ? DragByOffset(session, element->Get(), *offset) : Result(element.error());
}

Result DragDrop(Session& session, const CommandParams& params) {
  const std::string type = params.Get("dest-type");
  if (type == "element") return DragToElement(session, params, "dest-element");
  if (type != "pos") return Fail(messages::kInvalidCoordinate);
  const auto offset = Coordinates(params, "dest-pos");
  if (!offset) return offset.error();
  const auto element = ResolveTargetElement(session, params);
  return element ? DragByOffset(session, element->Get(), *offset) : Result(element.error());
}

}  // namespace quillmate
