// Commands that are not built yet: they check their parameters and answer their own failure.
#include "api/messages.h"
#include "api/validation.h"
#include "capture/commands.h"

namespace quillmate::capture {

using api::CommandParams;
using api::Fail;
using api::Result;
namespace messages = api::messages;

Result GetTable(const CommandParams& params) {
  for (const char* key : {"by", "target"}) {
    const std::string locator = params.Get(key);
    if (!locator.empty() && !api::IsElementLocator(locator)) return Fail(messages::kInvalidElementLocator);
  }
  return Fail(messages::kTableNotFound);
}

Result TakeScreenshot(const CommandParams&) { return Fail(messages::kFailedToSaveImage); }

Result TakeElementShot(const CommandParams& params) {
  if (!api::IsElementLocator(params.Get("target"))) return Fail(messages::kInvalidElementLocator);
  return Fail(messages::kFailedToSaveImage);
}

Result GetControlInfo(const CommandParams& params) {
  if (!api::IsElementLocator(params.Get("target"))) return Fail(messages::kInvalidElementLocator);
  return Fail(messages::kElementNotFound);
}

}  // namespace quillmate::capture
