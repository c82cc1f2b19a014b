// The way of every element command from its "target" to an element.
#include "locate/element_search.h"

#include <string>

#include "api/messages.h"
#include "api/patterns.h"
#include "api/validation.h"
#include "locate/document_search.h"
#include "locate/element_registry.h"
#include "locate/frames.h"
#include "locate/locator_syntax.h"

namespace quillmate::locate {
namespace {

com::ComPtr<IHTMLElement> FindRemembered(std::string_view locator) {
  if (auto element = Recall(locator)) return element;
  if (!api::Matches(api::Pattern::kAnchor, locator)) return {};
  return Recall(ValueOf(locator));
}

}  // namespace

ElementOrFailure FindElement(std::string_view locator) {
  if (auto remembered = FindRemembered(locator)) return remembered;
  const auto document = GetFrameDocument();
  if (document == nullptr) return std::unexpected(api::Failure{api::messages::kElementNotFound});
  auto found = FindElements(document.Get(), locator, Wanted::kFirst);
  if (!found) return std::unexpected(std::move(found.error()));
  return std::move(found->front());
}

ElementOrFailure ResolveTargetElement(const api::CommandParams& params) {
  const std::string target = params.Get("target");
  if (!api::IsElementLocator(target)) {
    return std::unexpected(api::Failure{api::messages::kInvalidElementLocator});
  }
  return FindElement(target);
}

}  // namespace quillmate::locate
