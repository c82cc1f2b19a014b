// Values of form controls through the interface of each kind.
#include "dom/control_value.h"

#include "com/owned.h"

namespace quillmate {
namespace {

template <class Control>
std::optional<com::Bstr> ReadOwnValue(IHTMLElement* element) {
  const auto control = com::Query<Control>(element);
  com::Bstr value;
  if (control == nullptr || FAILED(control->get_value(value.put()))) return std::nullopt;
  return value;
}

template <class Control>
HRESULT PutOwnValue(IHTMLElement* element, const com::Bstr& text) {
  const auto control = com::Query<Control>(element);
  return control != nullptr ? control->put_value(text.get()) : E_NOINTERFACE;
}

std::optional<com::Bstr> ReadValueAttribute(IHTMLElement* element) {
  com::Variant value;
  const com::Bstr name(L"value");
  if (FAILED(element->getAttribute(name.get(), 0, value.put()))) return std::nullopt;
  // An absent attribute is null, which has no text form.
  return value.ToText().value_or(com::Bstr());
}

std::optional<com::Bstr> ReadText(IHTMLElement* element) {
  com::Bstr text;
  if (FAILED(element->get_innerText(text.put()))) return std::nullopt;
  return text;
}

/// @return nothing when the page refuses a call.
std::optional<bool> IsContentEditable(IHTMLElement* element) {
  const auto newer = com::Query<IHTMLElement3>(element);
  VARIANT_BOOL editable = VARIANT_FALSE;
  if (newer == nullptr || FAILED(newer->get_isContentEditable(&editable))) return std::nullopt;
  return editable != VARIANT_FALSE;
}

}  // namespace

ControlKind ControlKindOf(std::wstring_view tag) {
  if (tag == L"INPUT") return ControlKind::kInput;
  if (tag == L"TEXTAREA") return ControlKind::kTextArea;
  if (tag == L"SELECT") return ControlKind::kSelect;
  if (tag == L"BUTTON") return ControlKind::kButton;
  return ControlKind::kOther;
}

std::optional<ControlKind> ReadControlKind(IHTMLElement* element) {
  com::Bstr tag;
  if (FAILED(element->get_tagName(tag.put()))) return std::nullopt;
  const ControlKind kind = ControlKindOf(tag.view());
  if (kind != ControlKind::kOther) return kind;
  const auto editable = IsContentEditable(element);
  if (!editable) return std::nullopt;
  return *editable ? ControlKind::kEditableRegion : kind;
}

std::optional<com::Bstr> ReadValue(IHTMLElement* element, ControlKind kind) {
  switch (kind) {
    case ControlKind::kInput:
      return ReadOwnValue<IHTMLInputElement>(element);
    case ControlKind::kTextArea:
      return ReadOwnValue<IHTMLTextAreaElement>(element);
    case ControlKind::kSelect:
      return ReadOwnValue<IHTMLSelectElement>(element);
    case ControlKind::kButton:
      return ReadOwnValue<IHTMLButtonElement>(element);
    case ControlKind::kEditableRegion:
      return ReadText(element);
    case ControlKind::kOther:
      break;
  }
  return ReadValueAttribute(element);
}

HRESULT WriteOwnValue(IHTMLElement* element, ControlKind kind, const com::Bstr& text) {
  if (kind == ControlKind::kInput) return PutOwnValue<IHTMLInputElement>(element, text);
  if (kind == ControlKind::kTextArea) return PutOwnValue<IHTMLTextAreaElement>(element, text);
  if (kind == ControlKind::kEditableRegion) return element->put_innerText(text.get());
  return S_OK;
}

HRESULT WriteValueAttribute(IHTMLElement* element, const com::Bstr& text) {
  const com::Bstr name(L"value");
  return element->setAttribute(name.get(), com::Variant::Text(text.view()).get(), 0);
}

}  // namespace quillmate
