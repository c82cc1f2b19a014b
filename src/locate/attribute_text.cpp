// Attributes over IHTMLElement::getAttribute.
#include "locate/attribute_text.h"

#include "com/bstr.h"
#include "com/encoding.h"
#include "com/variant.h"

namespace quillmate::locate {

std::optional<std::string> ReadAttribute(IHTMLElement* element, std::string_view name) {
  constexpr LONG kAsWritten = 2;
  com::Variant value;
  const com::Bstr wide_name(com::FromAnsi(name));
  if (FAILED(element->getAttribute(wide_name.get(), kAsWritten, value.put()))) return std::nullopt;
  if (value.type() == VT_NULL || value.type() == VT_EMPTY) return std::nullopt;
  const auto text = value.ToText();
  if (!text) return std::nullopt;
  return com::ToAnsi(text->view());
}

}  // namespace quillmate::locate
