#include "locate/element_search.h"

#include <string>

#include "api/messages.h"
#include "api/patterns.h"
#include "locate/document_search.h"
#include "locate/locator_syntax.h"
#include "session/current_page.h"

namespace quillmate {
namespace {

com::ComPtr<IHTMLElement> FindRemembered(Session& session, std::string_view locator) {
  if (auto element = session.elements().Recall(locator)) return element;
  if (!Matches(Pattern::kAnchor, locator)) return {};
  return session.elements().Recall(ValueOf(locator));
}

}  // namespace

ElementOrFailure FindElement(Session& session, std::string_view locator) {
  if (auto remembered = FindRemembered(session, locator)) return remembered;
  const auto document = GetFrameDocument(session);
  if (document == nullptr) return Failed(messages::kElementNotFound);
  auto found = FindElements(document.Get(), locator, Wanted::kFirst);
  if (!found) return std::unexpected(std::move(found.error()));
  return std::move(found->front());
}

ElementOrFailure ResolveTargetElement(Session& session, const CommandParams& params) {
  const auto target = Locator(params);
  if (!target) return std::unexpected(target.error());
  return FindElement(session, *target);
}

}  // namespace quillmate
