// Commands that are not built yet: they check their parameters and answer their own failure.
#include "api/messages.h"
#include "api/validation.h"
#include "locate/commands.h"

namespace quillmate::locate {

using api::CommandParams;
using api::Fail;
using api::Result;
namespace messages = api::messages;

Result Scroll(const CommandParams& params) {
  if (!api::ParseCoordinatePair(params.Get("value"))) return Fail(messages::kInvalidCoordinate);
  return Fail(messages::kScrollFailed);
}

Result ScrollTo(const CommandParams& params) {
  if (!api::ParseCoordinatePair(params.Get("value"))) return Fail(messages::kInvalidCoordinate);
  if (!api::IsElementLocator(params.Get("target"))) return Fail(messages::kInvalidElementLocator);
  return Fail(messages::kScrollFailed);
}

Result ScrollIntoView(const CommandParams& params) {
  if (!api::IsElementLocator(params.Get("target"))) return Fail(messages::kInvalidElementLocator);
  return Fail(messages::kScrollIntoViewFailed);
}

Result GetElementPos(const CommandParams& params) {
  if (!api::IsElementLocator(params.Get("target"))) return Fail(messages::kInvalidElementLocator);
  if (!api::IsArea(params.Get("area"))) return Fail(messages::kInvalidArea);
  return Fail(messages::kGetElementposFailed);
}

Result GetElement(const CommandParams& params) {
  if (!api::IsElementLocator(params.Get("target"))) return Fail(messages::kInvalidElementLocator);
  if (!api::IsTextValue(params.Get("return"))) return Fail(messages::kInvalidParameter);
  return Fail(messages::kElementNotFound);
}

Result HasElement(const CommandParams& params) {
  if (!api::IsElementLocator(params.Get("target"))) return Fail(messages::kInvalidElementLocator);
  return Fail(messages::kElementNotFound);
}

Result IsElementExist(const CommandParams& params) {
  if (!api::IsElementLocator(params.Get("target"))) return Fail(messages::kInvalidElementLocator);
  return Fail(messages::kElementNotFound);
}

Result WaitShow(const CommandParams& params) {
  if (!api::IsElementLocator(params.Get("target"))) return Fail(messages::kInvalidElementLocator);
  return Fail(messages::kWaitElementShowFailed);
}

Result WaitDisappear(const CommandParams& params) {
  if (!api::IsElementLocator(params.Get("target"))) return Fail(messages::kInvalidElementLocator);
  return Fail(messages::kWaitElementDisappearFailed);
}

Result GetElementCount(const CommandParams& params) {
  if (!api::IsElementLocator(params.Get("target"))) return Fail(messages::kInvalidElementLocator);
  return Fail(messages::kElementNotFound);
}

Result GetChildElementCount(const CommandParams& params) {
  if (!api::IsElementLocator(params.Get("target"))) return Fail(messages::kInvalidElementLocator);
  if (!api::IsTextValue(params.Get("value"))) return Fail(messages::kInvalidParameter);
  return Fail(messages::kElementNotFound);
}

}  // namespace quillmate::locate
