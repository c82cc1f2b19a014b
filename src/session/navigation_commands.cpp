// The commands that move the selected surface through its pages.
#include "api/messages.h"
#include "com/bstr.h"
#include "com/encoding.h"
#include "commands.h"
#include "session/current_page.h"
#include "session/session.h"

namespace quillmate {

Result Refresh(Session& session, const CommandParams&) {
  WindowHolder* holder = session.ValidHolder();
  if (holder == nullptr || !holder->Answers()) return Fail(messages::kRefreshFail);
  // Deliberate: a page that is still loading is refused with this message.
  if (holder->IsBusy()) return Fail(messages::kFrameNotFound);
  return holder->Refresh() ? Done() : Fail(messages::kRefreshFail);
}

Result Forward(Session& session, const CommandParams&) {
  WindowHolder* holder = session.ValidHolder();
  if (holder == nullptr) return Fail(messages::kFrameNotFound);
  return holder->GoForward() ? Done() : Fail(messages::kGoForwardFail);
}

Result Back(Session& session, const CommandParams&) {
  WindowHolder* holder = session.ValidHolder();
  if (holder == nullptr) return Fail(messages::kFrameNotFound);
  return holder->GoBack() ? Done() : Fail(messages::kGoBackFail);
}

Result CurrentUrl(Session& session, const CommandParams&) {
  if (session.ValidHolder() == nullptr) return Fail(messages::kBrowserNotFound);
  const auto document = GetFrameDocument(session);
  if (document == nullptr) return Fail(messages::kFrameNotFound);
  com::Bstr url;
  if (FAILED(document->get_URL(url.put())) || url.get() == nullptr) return Fail(messages::kGetUrlFailed);
  // Deliberate: addresses alone are returned in UTF-8.
  return Text(com::ToUtf8(url.view()));
}

}  // namespace quillmate
