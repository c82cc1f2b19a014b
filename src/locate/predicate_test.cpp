#include "locate/predicate_test.h"

#include <string>
#include <utility>

#include "com/bstr.h"
#include "com/call_failure.h"
#include "com/encoding.h"
#include "com/variant.h"
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

}  // namespace quillmate
