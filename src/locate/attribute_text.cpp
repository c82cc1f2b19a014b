// Attributes over IHTMLElement::getAttribute, which below document mode 9 reads properties instead.
#include "locate/attribute_text.h"

#include "com/encoding.h"
#include "com/owned.h"

namespace quillmate {
namespace {

HRESULT Read(IHTMLElement* element, std::wstring_view name, com::Variant& value) {
  return element->getAttribute(com::Bstr(name).get(), kAttributeAsWritten, value.put());
}

bool IsNothing(const com::Variant& value) { return value.type() == VT_NULL || value.type() == VT_EMPTY; }

/// Attribute names have no case.
bool IsNamed(std::wstring_view name, std::wstring_view other) {
  return CompareStringOrdinal(name.data(), static_cast<int>(name.size()), other.data(),
                              static_cast<int>(other.size()), TRUE) == CSTR_EQUAL;
}

/// The property behind an attribute whose name is a word of the script language; null for every other
/// attribute.
const wchar_t* PropertyBehind(std::wstring_view name) {
  if (IsNamed(name, L"class")) return L"className";
  if (IsNamed(name, L"for")) return L"htmlFor";
  return nullptr;
}

/// Attributes that old browsers deny to have when a script has set them.
bool IsDeniedWhenScripted(std::wstring_view name) {
  return IsNamed(name, L"id") || IsNamed(name, L"name") || IsNamed(name, L"coords");
}

std::optional<std::string> ToText(const com::Variant& value) {
  com::Bstr css;
  if (const auto style = value.As<IHTMLStyle>();
      style != nullptr && SUCCEEDED(style->get_cssText(css.put()))) {
    return com::ToAnsi(css.view());
  }
  const auto text = value.ToText();
  if (!text) return std::nullopt;
  return com::ToAnsi(text->view());
}

/// Below document mode 8 every attribute that the element could have has a node, and those not set say so.
bool IsWritten(IHTMLElement* element, std::wstring_view name) {
  const auto attributes = com::Query<IHTMLElement4>(element);
  com::ComPtr<IHTMLDOMAttribute> node;
  if (attributes == nullptr || FAILED(attributes->getAttributeNode(com::Bstr(name).get(), &node)) ||
      node == nullptr) {
    return false;
  }
  VARIANT_BOOL specified = VARIANT_TRUE;
  node->get_specified(&specified);
  return specified != VARIANT_FALSE;
}

}  // namespace

bool HasPropertyName(std::wstring_view name) { return PropertyBehind(name) != nullptr; }

HRESULT ReadAttribute(IHTMLElement* element, std::string_view name, std::optional<std::string>& text) {
  const std::wstring wide_name = com::FromAnsi(name);
  com::Variant value;
  HRESULT result = Read(element, wide_name, value);
  const wchar_t* property = PropertyBehind(wide_name);
  // Only below document mode 8 can getAttribute read the property.
  if (SUCCEEDED(result) && IsNothing(value) && property != nullptr) result = Read(element, property, value);
  if (SUCCEEDED(result) && !IsNothing(value)) text = ToText(value);
  return result;
}

std::optional<std::string> ReadAttribute(IHTMLElement* element, std::string_view name) {
  std::optional<std::string> text;
  ReadAttribute(element, name, text);
  return text;
}

std::optional<std::string> ReadWrittenAttribute(IHTMLElement* element, std::string_view name) {
  auto text = ReadAttribute(element, name);
  const std::wstring wide_name = com::FromAnsi(name);
  if (text && !text->empty() && IsDeniedWhenScripted(wide_name)) return text;
  if (!text || !IsWritten(element, wide_name)) return std::nullopt;
  return text;
}

}  // namespace quillmate
