#include "locate/visibility.h"

#include "com/bstr.h"
#include "com/call_failure.h"

namespace quillmate {
namespace {

/// @return S_OK when the element's own display is a value other than none, S_FALSE when it is none or there
/// is no value, else the call's failure.
HRESULT HasDisplay(IHTMLElement* element) {
  com::ComPtr<IHTMLElement2> styled;
  com::ComPtr<IHTMLCurrentStyle> style;
  com::Bstr display;
  HRESULT result = com::QueryKnown(element, styled);
  if (SUCCEEDED(result)) result = styled->get_currentStyle(&style);
  if (SUCCEEDED(result) && style != nullptr) result = style->get_display(display.put());
  if (FAILED(result)) return result;
  if (display.get() == nullptr) return S_FALSE;
  const com::Bstr none(L"none");
  const HRESULT order = VarBstrCmp(display.get(), none.get(), LOCALE_USER_DEFAULT, 0);
  return order == static_cast<HRESULT>(VARCMP_EQ) ? S_FALSE : S_OK;
}

Display NotShown(HRESULT result) {
  return com::FailedInTransit(result) ? Display::kUnknown : Display::kHidden;
}

}  // namespace

Display ReadDisplay(com::ComPtr<IHTMLElement> element) {
  while (element != nullptr) {
    HRESULT result = HasDisplay(element.Get());
    if (result != S_OK) return NotShown(result);
    com::ComPtr<IHTMLElement> parent;
    result = element->get_parentElement(&parent);
    if (FAILED(result)) return NotShown(result);
    if (parent == nullptr || com::IsSameObject(parent.Get(), element.Get())) return Display::kShown;
    element = std::move(parent);
  }
  return Display::kHidden;
}

}  // namespace quillmate
