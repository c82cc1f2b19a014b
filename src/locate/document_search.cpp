#include "locate/document_search.h"

#include <utility>

#include "api/messages.h"
#include "api/validation.h"
#include "com/call_limit.h"
#include "com/encoding.h"
#include "com/owned.h"
#include "locate/collection_matches.h"
#include "locate/locator_syntax.h"
#include "locate/path_query.h"

namespace quillmate {
namespace {

FoundOrFailure NotFound(HRESULT result) {
  return std::unexpected(SearchFailure{{messages::kElementNotFound}, !com::FailedInTransit(result)});
}

FoundOrFailure FindById(IHTMLDocument2* document, std::string_view id) {
  com::ComPtr<IHTMLDocument3> searchable;
  HRESULT result = com::QueryKnown(document, searchable);
  if (FAILED(result)) return NotFound(result);
  Found found;
  result = searchable->getElementById(com::Bstr(com::FromAnsi(id)).get(), &found.first);
  if (FAILED(result) || found.first == nullptr) return NotFound(result);
  found.count = 1;
  return found;
}

HRESULT CollectByClass(IHTMLDocument2* document, std::string_view names,
                       IHTMLElementCollection** collection) {
  com::ComPtr<IHTMLDocument7> searchable;
  const HRESULT result = com::QueryKnown(document, searchable);
  if (FAILED(result)) return result;
  return searchable->getElementsByClassName(com::Bstr(com::FromAnsi(names)).get(), collection);
}

HRESULT CollectByName(IHTMLDocument2* document, std::string_view name, IHTMLElementCollection** collection) {
  com::ComPtr<IHTMLDocument3> searchable;
  const HRESULT result = com::QueryKnown(document, searchable);
  if (FAILED(result)) return result;
  return searchable->getElementsByName(com::Bstr(com::FromAnsi(name)).get(), collection);
}

FoundOrFailure FindIn(com::ComPtr<IHTMLElementCollection> collection, std::string_view selector,
                      Wanted wanted) {
  CollectionMatches matches({std::move(collection), false, {}}, ParseSelector(selector), wanted);
  Found found;
  const bool first = wanted == Wanted::kFirst;
  const HRESULT result = first ? matches.Next(found.first) : matches.Count(found.count);
  if (found.first != nullptr) found.count = 1;
  if (FAILED(result) || found.count == 0) return NotFound(result);
  return found;
}

using Collect = HRESULT (*)(IHTMLDocument2*, std::string_view, IHTMLElementCollection**);

FoundOrFailure FindBy(Collect collect, IHTMLDocument2* document, std::string_view value, Wanted wanted) {
  const auto [head, selector] = SplitBracket(value, com::IsLeadByte);
  com::ComPtr<IHTMLElementCollection> collection;
  const HRESULT result = collect(document, head, &collection);
  if (FAILED(result)) return NotFound(result);
  return FindIn(std::move(collection), selector, wanted);
}

FoundOrFailure SearchFor(IHTMLDocument2* document, std::string_view locator, Wanted wanted) {
  const std::string_view value = ValueOf(locator);
  if (Matches(Pattern::kId, locator)) return FindById(document, value);
  if (Matches(Pattern::kClass, locator)) return FindBy(CollectByClass, document, value, wanted);
  if (Matches(Pattern::kName, locator)) return FindBy(CollectByName, document, value, wanted);
  if (Matches(Pattern::kAnyXpath, locator)) return EvaluatePath(document, value, wanted);
  return NotFound(S_OK);
}

FoundOrFailure Search(IHTMLDocument2* document, std::string_view locator, Wanted wanted) {
  if (const auto unquoted = Unquote(locator)) {
    auto found = SearchFor(document, *unquoted, wanted);
    if (found || !found.error().page_answered) return found;
  }
  return SearchFor(document, locator, wanted);
}

}  // namespace

std::expected<com::ComPtr<IHTMLElement>, SearchFailure> FindFirst(IHTMLDocument2* document,
                                                                  std::string_view locator) {
  auto found = Search(document, locator, Wanted::kFirst);
  if (!found) return std::unexpected(std::move(found.error()));
  return std::move(found->first);
}

std::expected<std::int32_t, SearchFailure> CountMatches(IHTMLDocument2* document, std::string_view locator) {
  auto found = Search(document, locator, Wanted::kCount);
  if (found) return found->count;
  if (!found.error().page_answered) return std::unexpected(std::move(found.error()));
  return 0;
}

}  // namespace quillmate
