#include "locate/element_search.h"

#include <string>

#include "api/messages.h"
#include "api/patterns.h"
#include "locate/document_search.h"
#include "locate/locator_syntax.h"

namespace quillmate {
namespace {

com::ComPtr<IHTMLElement> FindRemembered(Session& session, std::string_view locator) {
  if (auto element = session.elements().Recall(locator)) return element;
  if (!Matches(Pattern::kAnchor, locator)) return {};
  return session.elements().Recall(ValueOf(locator));
}

ElementOrFailure FindOnPage(const PageOrMissing& page, std::string_view locator) {
  if (page) return FindFirst(page->back().document.Get(), locator);
  return std::unexpected(SearchFailure{{messages::kElementNotFound}, page.error() != PageMissing::kSilent});
}

}  // namespace

ElementOrFailure FindElement(Session& session, std::string_view locator) {
  if (auto remembered = FindRemembered(session, locator)) return remembered;
  return FindOnPage(WalkFrames(session), locator);
}

ElementOrFailure FindElement(Session& session, const PageOrMissing& page, std::string_view locator) {
  if (auto remembered = FindRemembered(session, locator)) return remembered;
  return FindOnPage(page, locator);
}

ElementOrFailure ResolveTargetElement(Session& session, const CommandParams& params) {
  const auto target = Locator(params);
  if (!target) return std::unexpected(SearchFailure{target.error()});
  return FindElement(session, *target);
}

}  // namespace quillmate
