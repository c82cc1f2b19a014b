// Commands that are not built yet: they check their parameters and answer their own failure.
#include "api/messages.h"
#include "api/validation.h"
#include "dom/commands.h"
#include "dom/manual_click.h"

namespace quillmate::dom {

using api::CommandParams;
using api::Fail;
using api::Result;
namespace messages = api::messages;

Result ClickManually(IHTMLElement*) { return Fail(messages::kDoubleClickFailed); }

Result TypeText(const CommandParams& params) {
  if (!api::IsElementLocator(params.Get("target"))) return Fail(messages::kInvalidElementLocator);
  if (!api::IsTextValue(params.Get("value"))) return Fail(messages::kInvalidParameter);
  return Fail(messages::kSetAttributeFailed);
}

Result Append(const CommandParams& params) {
  if (!api::IsElementLocator(params.Get("target"))) return Fail(messages::kInvalidElementLocator);
  if (!api::IsTextValue(params.Get("value"))) return Fail(messages::kInvalidParameter);
  return Fail(messages::kFailedToAddTextToTheEditBox);
}

Result Clear(const CommandParams& params) {
  if (!api::IsElementLocator(params.Get("target"))) return Fail(messages::kInvalidElementLocator);
  return Fail(messages::kFailedToClearTheEditBox);
}

Result Select(const CommandParams& params) {
  if (!api::IsElementLocator(params.Get("target"))) return Fail(messages::kInvalidElementLocator);
  if (!api::IsOptionSelector(params.Get("value"))) return Fail(messages::kInvalidOption);
  return Fail(messages::kGetOptionFailed);
}

Result Deselect(const CommandParams& params) {
  if (!api::IsElementLocator(params.Get("target"))) return Fail(messages::kInvalidElementLocator);
  if (!api::IsOptionSelector(params.Get("value"))) return Fail(messages::kInvalidOption);
  return Fail(messages::kDeselectFailed);
}

Result SendKeysToElement(const CommandParams& params) {
  if (!api::IsElementLocator(params.Get("target"))) return Fail(messages::kInvalidElementLocator);
  if (!api::IsTextValue(params.Get("value"))) return Fail(messages::kInvalidParameter);
  return Fail(messages::kSendKeysToElementFailed);
}

}  // namespace quillmate::dom
