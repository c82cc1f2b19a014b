// The locator forms over one document.
#include "locate/document_search.h"

#include <string>
#include <utility>

#include "api/messages.h"
#include "api/patterns.h"
#include "com/bstr.h"
#include "com/encoding.h"
#include "locate/collections.h"
#include "locate/locator_syntax.h"
#include "locate/path_query.h"

namespace quillmate {
namespace {

using Found = OrFailure<Elements>;

Found AsFound(Elements elements) {
  if (elements.empty()) return Failed(messages::kElementNotFound);
  return elements;
}

Elements FindById(IHTMLDocument2* document, std::string_view id) {
  com::ComPtr<IHTMLElement> element;
  const auto searchable = com::Query<IHTMLDocument3>(document);
  if (searchable == nullptr ||
      FAILED(searchable->getElementById(com::Bstr(com::FromAnsi(id)).get(), &element)) ||
      element == nullptr) {
    return {};
  }
  return {std::move(element)};
}

com::ComPtr<IHTMLElementCollection> CollectByClass(IHTMLDocument2* document, std::string_view names) {
  com::ComPtr<IHTMLElementCollection> collection;
  if (const auto searchable = com::Query<IHTMLDocument7>(document)) {
    searchable->getElementsByClassName(com::Bstr(com::FromAnsi(names)).get(), &collection);
  }
  return collection;
}

com::ComPtr<IHTMLElementCollection> CollectByName(IHTMLDocument2* document, std::string_view name) {
  com::ComPtr<IHTMLElementCollection> collection;
  if (const auto searchable = com::Query<IHTMLDocument3>(document)) {
    searchable->getElementsByName(com::Bstr(com::FromAnsi(name)).get(), &collection);
  }
  return collection;
}

Elements FilterCollection(com::ComPtr<IHTMLElementCollection> collection, std::string_view selector,
                          Wanted wanted) {
  CollectionMatches matches(std::move(collection), ParseSelector(selector));
  Elements elements;
  while (auto element = matches.Next()) {
    elements.push_back(std::move(element));
    if (wanted == Wanted::kFirst) break;
  }
  return matches.IsCutShort() ? Elements() : elements;
}

Found Search(IHTMLDocument2* document, std::string_view locator, Wanted wanted) {
  const std::string_view value = ValueOf(locator);
  if (Matches(Pattern::kId, locator)) return AsFound(FindById(document, value));
  if (Matches(Pattern::kClass, locator)) {
    const auto [head, selector] = SplitBracket(value);
    return AsFound(FilterCollection(CollectByClass(document, head), selector, wanted));
  }
  if (Matches(Pattern::kName, locator)) {
    const auto [head, selector] = SplitBracket(value);
    return AsFound(FilterCollection(CollectByName(document, head), selector, wanted));
  }
  if (Matches(Pattern::kAnyXpath, locator)) return EvaluatePath(document, value, wanted);
  return AsFound({});
}

}  // namespace

Found FindElements(IHTMLDocument2* document, std::string_view locator, Wanted wanted) {
  if (const auto unquoted = Unquote(locator)) {
    if (auto found = Search(document, *unquoted, wanted)) return found;
  }
  return Search(document, locator, wanted);
}

}  // namespace quillmate
