// The commands that move the selected surface through its pages.
#include "api/messages.h"
#include "com/bstr.h"
#include "com/encoding.h"
#include "locate/frames.h"
#include "session/commands.h"
#include "session/current_target.h"

namespace quillmate::session {

using namespace api;  // NOLINT(google-build-using-namespace): the result builders read as words

Result Refresh(const CommandParams&) {
  WindowHolder* holder = ValidHolder();
  // A page that is still loading is refused with this message, on purpose.
  if (holder != nullptr && holder->IsBusy()) return Fail(messages::kFrameNotFound);
  return holder != nullptr && holder->Refresh() ? Done() : Fail(messages::kRefreshFail);
}

Result Forward(const CommandParams&) {
  WindowHolder* holder = ValidHolder();
  if (holder == nullptr) return Fail(messages::kFrameNotFound);
  return holder->GoForward() ? Done() : Fail(messages::kGoForwardFail);
}

Result Back(const CommandParams&) {
  WindowHolder* holder = ValidHolder();
  if (holder == nullptr) return Fail(messages::kFrameNotFound);
  return holder->GoBack() ? Done() : Fail(messages::kGoBackFail);
}

Result CurrentUrl(const CommandParams&) {
  if (ValidHolder() == nullptr) return Fail(messages::kBrowserNotFound);
  const auto document = locate::GetFrameDocument();
  if (document == nullptr) return Fail(messages::kFrameNotFound);
  com::Bstr url;
  if (FAILED(document->get_URL(url.put())) || url.get() == nullptr) return Fail(messages::kGetUrlFailed);
  // Addresses alone are answered in UTF-8.
  return Text(com::ToUtf8(url.view()));
}

}  // namespace quillmate::session
