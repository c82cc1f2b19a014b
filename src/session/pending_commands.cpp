// Commands that are not built yet: they check their parameters and answer their own failure.
#include "api/messages.h"
#include "api/validation.h"
#include "session/commands.h"

namespace quillmate::session {

using api::CommandParams;
using api::Fail;
using api::Result;
namespace messages = api::messages;

Result SelectWindow(const CommandParams& params) {
  if (!api::IsWindowLocator(params.Get("target"))) return Fail(messages::kInvalidWindowLocator);
  return Fail(messages::kBrowserNotFound);
}

Result SelectWindowUntop(const CommandParams& params) {
  if (!api::IsWindowLocator(params.Get("target"))) return Fail(messages::kInvalidWindowLocator);
  return Fail(messages::kBrowserNotFound);
}

Result NewBrowser(const CommandParams&) { return Fail(messages::kOpenNewBrowserFailed); }

Result Open(const CommandParams& params) {
  const std::string target = params.Get("target");
  if (!api::IsTextValue(target)) return Fail(messages::kInvalidParameter);
  if (target.starts_with(messages::kFilePrefix) && !api::LocalFileExists(target)) {
    return Fail(messages::kLocalFileMissing);
  }
  const std::string by = params.Get("by");
  if (!by.empty() && by != "_blank") return Fail(messages::kInvalidParameter);
  return Fail(messages::kOpenNewTabFailed);
}

Result Quit(const CommandParams&) { return Fail(messages::kQuitFailed); }

Result Close(const CommandParams&) { return Fail(messages::kCloseFailed); }

Result Refresh(const CommandParams&) { return Fail(messages::kRefreshFail); }

Result Forward(const CommandParams&) { return Fail(messages::kGoForwardFail); }

Result Back(const CommandParams&) { return Fail(messages::kGoBackFail); }

Result SelectWindowSize(const CommandParams&) { return Fail(messages::kSelectWindowSizeFail); }

Result CurrentUrl(const CommandParams&) { return Fail(messages::kGetUrlFailed); }

}  // namespace quillmate::session
