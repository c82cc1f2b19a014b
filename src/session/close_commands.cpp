// The commands that close a tab or a window.
#include "api/messages.h"
#include "session/commands.h"
#include "session/current_target.h"

namespace quillmate::session {

using namespace api;  // NOLINT(google-build-using-namespace): the result builders read as words

Result Close(const CommandParams& params) {
  const bool others = params.Get("option") == "others";
  WindowHolder* holder = ValidHolder();
  if (holder == nullptr) return Fail(messages::kFrameNotFound);
  if (!(others ? holder->CloseByKeys() : holder->CloseTab())) return Fail(messages::kCloseFailed);
  // Nothing is selected afterwards, on purpose also when only the other tabs were closed.
  ClearTarget();
  return Done();
}

Result Quit(const CommandParams&) {
  WindowHolder* holder = ValidHolder();
  if (holder == nullptr) return Fail(messages::kFrameNotFound);
  if (!holder->CloseWindow()) return Fail(messages::kQuitFailed);
  ClearTarget();
  return Done();
}

}  // namespace quillmate::session
