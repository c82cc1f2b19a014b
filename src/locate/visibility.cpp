// The climb from an element to the root of its page.
#include "locate/visibility.h"

#include "com/bstr.h"

namespace quillmate {
namespace {

bool IsDisplayNone(IHTMLCurrentStyle* style) {
  com::Bstr display;
  const com::Bstr none(L"none");
  return FAILED(style->get_display(display.put())) ||
         VarBstrCmp(display.get(), none.get(), LOCALE_USER_DEFAULT, 0) == static_cast<HRESULT>(VARCMP_EQ);
}

}  // namespace

bool IsElementDisplayed(com::ComPtr<IHTMLElement> element) {
  while (element != nullptr) {
    const auto styled = com::Query<IHTMLElement2>(element);
    com::ComPtr<IHTMLCurrentStyle> style;
    if (styled == nullptr || FAILED(styled->get_currentStyle(&style)) || style == nullptr) return false;
    if (IsDisplayNone(style.Get())) return false;
    com::ComPtr<IHTMLElement> parent;
    element->get_parentElement(&parent);
    if (parent == nullptr || com::IsSameObject(parent.Get(), element.Get())) return true;
    element = std::move(parent);
  }
  return false;
}

}  // namespace quillmate
