#include "session/current_page.h"

#include <string>

#include "api/messages.h"
#include "locate/frames.h"

namespace quillmate {

com::ComPtr<IHTMLDocument2> GetFrameDocument(Session& session) {
  const WindowHolder* holder = session.ValidHolder();
  if (holder == nullptr) return {};
  auto document = holder->GetDocument();
  for (const std::string& locator : session.Current()->frame_path) {
    document = FindFrameDocument(document.Get(), locator);
  }
  return document;
}

bool IsTargetUsable(Session& session) {
  const WindowHolder* holder = session.ValidHolder();
  return holder != nullptr && holder->GetDocument() != nullptr;
}

OrFailure<com::ComPtr<IHTMLDocument2>> BringPageToTop(Session& session, IHTMLElement* element) {
  auto document = GetFrameDocument(session);
  if (element == nullptr || document == nullptr) return Failed(messages::kElementNotFound);
  WindowHolder* holder = session.ValidHolder();
  if (holder == nullptr || !holder->BringToTop()) return Failed(messages::kSwitchTabFailed);
  return document;
}

}  // namespace quillmate
