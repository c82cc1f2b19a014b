#include "locate/collection_matches.h"

#include <utility>

#include "com/bstr.h"
#include "com/call_failure.h"
#include "com/encoding.h"
#include "com/variant.h"

namespace quillmate {
namespace {

CollectionItems::Need NeedOf(const Selector& selector, Wanted wanted) {
  if (wanted == Wanted::kCount) return CollectionItems::Need::kAll;
  return std::holds_alternative<EveryItem>(selector) ? CollectionItems::Need::kOne
                                                     : CollectionItems::Need::kSome;
}

std::string ToUpper(std::string_view text) {
  std::string upper(text);
  for (char& c : upper) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  }
  return upper;
}

}  // namespace

HRESULT HasTag(IHTMLElement* element, std::string_view tag) {
  com::Bstr actual;
  const HRESULT result = element->get_tagName(actual.put());
  if (FAILED(result)) return result;
  // The page's own elements tell their tags in capitals, those of other languages (SVG) as they are written.
  const std::string name = com::ToAnsi(actual.view());
  return name == tag || name == ToUpper(tag) ? S_OK : S_FALSE;
}

CollectionMatches::CollectionMatches(Candidates candidates, Selector selector, Wanted wanted)
    : candidates_(std::move(candidates)),
      selector_(std::move(selector)),
      items_(candidates_.collection, NeedOf(selector_, wanted)) {
  if (const auto* predicate = std::get_if<Predicate>(&selector_))
    test_.emplace(*predicate, candidates_.one_tag);
}

HRESULT CollectionMatches::Next(com::ComPtr<IHTMLElement>& match) {
  match.Reset();
  com::ComPtr<IDispatch> item;
  for (;;) {
    const auto* position = std::get_if<Position>(&selector_);
    HRESULT result = position != nullptr ? TakePosition(position->number, item) : NextItem(item);
    if (result != S_OK) return result;
    result = com::QueryKnown(item.Get(), match);
    if (FAILED(result) || candidates_.only_tag.empty()) return result;
    result = HasTag(match.Get(), candidates_.only_tag);
    if (result != S_FALSE) return result;
    match.Reset();
  }
}

HRESULT CollectionMatches::TakePosition(LONG number, com::ComPtr<IDispatch>& item) {
  if (candidates_.collection == nullptr || number < 1 || std::exchange(position_taken_, true)) return S_FALSE;
  const HRESULT result =
      candidates_.collection->item(com::Variant::Int(number - 1).get(), com::Variant::Int(0).get(), &item);
  if (FAILED(result)) return result;
  return item != nullptr ? S_OK : S_FALSE;
}

HRESULT CollectionMatches::NextItem(com::ComPtr<IDispatch>& item) {
  for (;;) {
    HRESULT result = items_.Next(item);
    if (result != S_OK) return result;
    if (item == nullptr) continue;
    result = IsMatch(item.Get());
    if (result != S_FALSE) return result;
  }
}

HRESULT CollectionMatches::IsMatch(IDispatch* item) { return test_ ? test_->Holds(item) : S_OK; }

HRESULT CollectionMatches::Count(std::int32_t& count) {
  count = 0;
  if (candidates_.collection == nullptr) return S_OK;
  if (!test_ && candidates_.only_tag.empty()) {
    LONG length = 0;
    const HRESULT result = candidates_.collection->get_length(&length);
    const auto* position = std::get_if<Position>(&selector_);
    const bool has_position = position != nullptr && position->number >= 1 && position->number <= length;
    count = position != nullptr ? has_position : static_cast<std::int32_t>(length);
    return result;
  }
  com::ComPtr<IDispatch> item;
  com::ComPtr<IHTMLElement> match;
  HRESULT result = S_OK;
  while ((result = candidates_.only_tag.empty() ? NextItem(item) : Next(match)) == S_OK) ++count;
  return SUCCEEDED(result) ? S_OK : result;
}

}  // namespace quillmate
