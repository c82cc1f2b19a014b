// The commands that choose the surface later commands act on.
#include <string>

#include "api/messages.h"
#include "api/validation.h"
#include "session/commands.h"
#include "session/current_target.h"
#include "session/find_target.h"
#include "session/page_load.h"
#include "session/window_size.h"

namespace quillmate::session {

using namespace api;  // NOLINT(google-build-using-namespace): the result builders read as words

Result SelectWindow(const CommandParams& params) {
  const std::string target = params.Get("target");
  if (!IsWindowLocator(target)) return Fail(messages::kInvalidWindowLocator);
  auto holder = FindTarget(target);
  if (holder == nullptr) return Fail(messages::kBrowserNotFound);
  SelectTarget(std::move(holder));
  // A surface that cannot be brought forward stays selected all the same.
  WindowHolder* selected = ValidHolder();
  const bool on_top = selected != nullptr && selected->BringToTop();
  return on_top ? Done() : Fail(messages::kFailedToPlaceTheWebPageToTop);
}

Result SelectWindowUntop(const CommandParams& params) {
  const std::string target = params.Get("target");
  const std::string tab_status = params.Get("tab-status");
  if (!IsWindowLocator(target)) return Fail(messages::kInvalidWindowLocator);
  auto holder = FindTarget(target);
  if (holder == nullptr) return Fail(messages::kBrowserNotFound);
  SelectTarget(std::move(holder));
  const bool loaded = tab_status != "loading" || WaitForPageLoad();
  return loaded ? Done() : Fail(messages::kThePageLoadTimeout);
}

Result SelectWindowSize(const CommandParams& params) { return SizeCurrentWindow(params.Get("target")); }

}  // namespace quillmate::session
