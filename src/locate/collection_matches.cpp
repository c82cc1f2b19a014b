#include "locate/collection_matches.h"

#include <string>
#include <utility>

#include "com/call_limit.h"
#include "com/encoding.h"
#include "com/owned.h"
#include "locate/attribute_text.h"

namespace quillmate {
namespace {

using Source = Predicate::Source;

const wchar_t* MemberName(Source source) {
  switch (source) {
    case Source::kId:
      return L"id";
    case Source::kClassName:
      return L"className";
    case Source::kText:
      return L"innerText";
    case Source::kAttribute:
      break;
  }
  return L"getAttribute";
}

HRESULT ReadProperty(IHTMLElement* element, Source source, BSTR* text) {
  if (source == Source::kId) return element->get_id(text);
  if (source == Source::kClassName) return element->get_className(text);
  return element->get_innerText(text);
}

HRESULT InvokeGetAttribute(IDispatch* element, DISPID member, std::wstring_view name, VARIANT* value) {
  const com::Bstr attribute(name);
  VARIANT arguments[2];  // in reverse order, as Invoke takes them
  arguments[0].vt = VT_I4;
  arguments[0].lVal = kAttributeAsWritten;
  arguments[1].vt = VT_BSTR;
  arguments[1].bstrVal = attribute.get();
  DISPPARAMS parameters{arguments, nullptr, 2, 0};
  return element->Invoke(member, IID_NULL, LOCALE_INVARIANT, DISPATCH_METHOD, &parameters, value, nullptr,
                         nullptr);
}

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

PredicateTest::PredicateTest(Predicate predicate, bool one_kind)
    : predicate_(std::move(predicate)), one_kind_(one_kind) {}

HRESULT PredicateTest::Holds(IDispatch* element) {
  com::Variant value;
  const HRESULT result = ReadLateBound(element, value.put());
  if (com::FailedInTransit(result)) return result;
  // Only a text is what it seems: a form's own field named "id" hides the form's id from late-bound callers,
  // and attributes of other types have their own way to a text.
  if (SUCCEEDED(result) && value.type() == VT_BSTR) {
    const std::wstring_view text(value.get().bstrVal != nullptr ? value.get().bstrVal : L"",
                                 SysStringLen(value.get().bstrVal));
    return predicate_.Holds(com::ToAnsi(text)) ? S_OK : S_FALSE;
  }
  if (SUCCEEDED(result) && value.type() == VT_NULL && predicate_.source == Source::kAttribute &&
      !HasPropertyName(com::FromAnsi(predicate_.attribute))) {
    return S_FALSE;
  }
  com::ComPtr<IHTMLElement> typed;
  const HRESULT query = com::QueryKnown(element, typed);
  if (FAILED(query)) return query;
  return Holds(typed.Get());
}

HRESULT PredicateTest::Holds(IHTMLElement* element) {
  if (predicate_.source == Source::kAttribute) {
    std::optional<std::string> text;
    const HRESULT result = ReadAttribute(element, predicate_.attribute, text);
    if (com::FailedInTransit(result)) return result;
    return text && predicate_.Holds(*text) ? S_OK : S_FALSE;
  }
  com::Bstr text;
  const HRESULT result = ReadProperty(element, predicate_.source, text.put());
  if (com::FailedInTransit(result)) return result;
  return SUCCEEDED(result) && predicate_.Holds(com::ToAnsi(text.view())) ? S_OK : S_FALSE;
}

HRESULT PredicateTest::ReadLateBound(IDispatch* element, VARIANT* value) {
  DISPID member = DISPID_UNKNOWN;
  const HRESULT result = MemberOf(element, member);
  if (FAILED(result)) return result;
  if (predicate_.source == Source::kAttribute)
    return InvokeGetAttribute(element, member, com::FromAnsi(predicate_.attribute), value);
  DISPPARAMS none{};
  return element->Invoke(member, IID_NULL, LOCALE_INVARIANT, DISPATCH_PROPERTYGET, &none, value, nullptr,
                         nullptr);
}

HRESULT PredicateTest::MemberOf(IDispatch* element, DISPID& member) {
  member = member_;
  if (one_kind_ && member != DISPID_UNKNOWN) return S_OK;
  std::wstring name = MemberName(predicate_.source);
  LPOLESTR names[] = {name.data()};
  const HRESULT result = element->GetIDsOfNames(IID_NULL, names, 1, LOCALE_INVARIANT, &member);
  if (SUCCEEDED(result)) member_ = member;
  return result;
}

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
