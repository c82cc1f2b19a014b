// Change events in old and new document modes.
#include "dom/change_event.h"

#include "com/bstr.h"
#include "com/com_ptr.h"
#include "com/variant.h"

namespace quillmate::dom {
namespace {

using com::Bstr;
using com::ComPtr;

ComPtr<IDOMEvent> CreateChangeEvent(IHTMLElement* element) {
  ComPtr<IDispatch> document;
  if (FAILED(element->get_document(&document))) return {};
  const auto factory = com::Query<IDocumentEvent>(document);
  ComPtr<IDOMEvent> event;
  if (factory == nullptr || FAILED(factory->createEvent(Bstr(L"HTMLEvents").get(), &event)) ||
      event == nullptr) {
    return {};
  }
  if (FAILED(event->initEvent(Bstr(L"change").get(), VARIANT_TRUE, VARIANT_FALSE))) return {};
  return event;
}

void FireOldEvent(IHTMLElement* element) {
  const auto target = com::Query<IHTMLElement3>(element);
  VARIANT_BOOL cancelled = VARIANT_FALSE;
  com::Variant no_event;
  if (target != nullptr) target->fireEvent(Bstr(L"onchange").get(), no_event.put(), &cancelled);
}

}  // namespace

void RaiseChange(IHTMLElement* element) {
  // Only elements of document modes 9 and up are event targets.
  const auto target = com::Query<IEventTarget>(element);
  const auto event = target != nullptr ? CreateChangeEvent(element) : nullptr;
  if (event == nullptr) return FireOldEvent(element);
  VARIANT_BOOL proceed = VARIANT_TRUE;
  target->dispatchEvent(event.Get(), &proceed);
}

}  // namespace quillmate::dom
