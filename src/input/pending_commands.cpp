// Commands that are not built yet: they check their parameters and answer their own failure.
#include "api/messages.h"
#include "api/validation.h"
#include "input/commands.h"

namespace quillmate::input {

using api::CommandParams;
using api::Fail;
using api::Result;
namespace messages = api::messages;

Result SendKeys(const CommandParams& params) {
  if (!api::IsElementLocator(params.Get("target"))) return Fail(messages::kInvalidElementLocator);
  if (!api::IsTextValue(params.Get("value"))) return Fail(messages::kInvalidParameter);
  return Fail(messages::kSendKeysFailed);
}

Result ClickAndHold(const CommandParams& params) {
  if (!api::IsElementLocator(params.Get("target"))) return Fail(messages::kInvalidElementLocator);
  return Fail(messages::kClickAndHoldFailed);
}

Result DoubleClick(const CommandParams& params) {
  if (!api::IsElementLocator(params.Get("target"))) return Fail(messages::kInvalidElementLocator);
  return Fail(messages::kDoubleClickFailed);
}

Result RightClick(const CommandParams& params) {
  if (!api::IsElementLocator(params.Get("target"))) return Fail(messages::kInvalidElementLocator);
  return Fail(messages::kRightClickFailed);
}

Result Release(const CommandParams& params) {
  if (!api::IsElementLocator(params.Get("target"))) return Fail(messages::kInvalidElementLocator);
  return Fail(messages::kReleaseFailed);
}

Result MoveByOffset(const CommandParams& params) {
  if (!api::ParseCoordinatePair(params.Get("value"))) return Fail(messages::kInvalidCoordinate);
  return Fail(messages::kMoveByOffsetFailed);
}

Result MoveToElement(const CommandParams& params) {
  if (!api::IsElementLocator(params.Get("target"))) return Fail(messages::kInvalidElementLocator);
  return Fail(messages::kMoveToElementFailed);
}

Result MoveToElementWithOffset(const CommandParams& params) {
  if (!api::IsElementLocator(params.Get("target"))) return Fail(messages::kInvalidElementLocator);
  if (!api::ParseCoordinatePair(params.Get("value"))) return Fail(messages::kInvalidCoordinate);
  return Fail(messages::kMoveToElementWithOffsetFailed);
}

Result Move(const CommandParams& params) {
  const std::string value = params.Get("value");
  if (!value.empty() && !api::ParseCoordinatePair(value)) return Fail(messages::kInvalidCoordinate);
  const std::string target = params.Get("target");
  if (!target.empty() && !api::IsElementLocator(target)) return Fail(messages::kInvalidElementLocator);
  return Fail(messages::kMoveByOffsetFailed);
}

Result DragAndDrop(const CommandParams& params) {
  if (!api::IsElementLocator(params.Get("target"))) return Fail(messages::kInvalidElementLocator);
  if (!api::IsElementLocator(params.Get("value"))) return Fail(messages::kInvalidElementLocator);
  return Fail(messages::kDragAndDropFailed);
}

Result DragAndDropByOffset(const CommandParams& params) {
  if (!api::IsElementLocator(params.Get("target"))) return Fail(messages::kInvalidElementLocator);
  if (!api::ParseCoordinatePair(params.Get("value"))) return Fail(messages::kInvalidCoordinate);
  return Fail(messages::kDragAndDropFailed);
}

Result DragDrop(const CommandParams& params) {
  const std::string type = params.Get("dest-type");
  if (type != "element" && (type != "pos" || !api::ParseCoordinatePair(params.Get("dest-pos")))) {
    return Fail(messages::kInvalidCoordinate);
  }
  if (!api::IsElementLocator(params.Get("target"))) return Fail(messages::kInvalidElementLocator);
  if (type == "element" && !api::IsElementLocator(params.Get("dest-element"))) {
    return Fail(messages::kInvalidElementLocator);
  }
  return Fail(messages::kDragAndDropFailed);
}

Result ActionChains(const CommandParams&) { return api::Done(); }

}  // namespace quillmate::input
