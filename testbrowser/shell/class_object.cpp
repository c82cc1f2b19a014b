#include "shell/class_object.h"

namespace testbrowser::shell {
namespace {

class Factory : public dom::ComObject<IClassFactoryStub> {
 public:
  explicit Factory(ClassObject::Maker make) : make_(std::move(make)) {}

  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** out) override {
    if (out == nullptr) return E_POINTER;
    *out = nullptr;
    return outer != nullptr ? CLASS_E_NOAGGREGATION : make_(iid, out);
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

 private:
  ClassObject::Maker make_;
};

}  // namespace

ClassObject::ClassObject(REFCLSID class_id, Use use, Maker make) {
  const DWORD flags = use == Use::kOneObject ? REGCLS_SINGLEUSE : REGCLS_MULTIPLEUSE;
  const auto factory = dom::MakeObject<Factory>(std::move(make));
  CoRegisterClassObject(class_id, factory.Get(), CLSCTX_LOCAL_SERVER, flags, &cookie_);
}

ClassObject::~ClassObject() {
  if (cookie_ != 0) CoRevokeClassObject(cookie_);
}

}  // namespace testbrowser::shell
