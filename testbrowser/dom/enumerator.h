// IEnumVARIANT over a collection of a page. It fetches as many members at once as its caller asks for.
#pragma once

#include "dom/com_object.h"
#include "dom/object.h"
#include "generated/dom_stubs.h"

namespace testbrowser::dom {

class Enumerator : public ComObject<IEnumVARIANTStub> {
 public:
  explicit Enumerator(quillmate::com::ComPtr<Object> collection) : collection_(std::move(collection)) {}

  HRESULT STDMETHODCALLTYPE Next(ULONG count, VARIANT* values, ULONG* fetched) override;

 private:
  quillmate::com::ComPtr<Object> collection_;
  int position_ = 0;
};

}  // namespace testbrowser::dom
