#include "dom/held_interfaces.h"

#include <windows.h>
#include <dispex.h>
#include <exdisp.h>
#include <oleacc.h>
#include <servprov.h>
#include <algorithm>
#include <vector>

#include "com/owned.h"
#include "dom/facet_type.h"
#include "dom/type_libraries.h"

namespace testbrowser::dom {
namespace {

const std::vector<const IID*>& HeldIds() {
  static const std::vector<const IID*> ids = [] {
    std::vector<const IID*> all = {
        &__uuidof(IDispatch),    &__uuidof(IDispatchEx), &__uuidof(IServiceProvider),
        &__uuidof(IOleWindow),   &__uuidof(IWebBrowser), &__uuidof(IWebBrowserApp),
        &__uuidof(IWebBrowser2), &__uuidof(IAccessible), &__uuidof(IEnumVARIANT)};
    for (const FacetType& type : FacetTypes()) all.insert(all.end(), type.ids.begin(), type.ids.end());
    return all;
  }();
  return ids;
}

/// Has every interface by name; nobody reaches it to call one.
class Placeholder final : public IUnknown {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
    const bool known = iid == __uuidof(IUnknown) ||
                       std::ranges::any_of(HeldIds(), [&](const IID* id) { return *id == iid; });
    *out = known ? this : nullptr;
    return known ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
};

}  // namespace

void HoldInterfaces() {
  static Placeholder placeholder;
  TypeInfoOf(__uuidof(IWebBrowser2));  // each export would read the library again
  for (const IID* id : HeldIds()) {
    quillmate::com::ComPtr<IStream> stream;
    if (FAILED(CreateStreamOnHGlobal(nullptr, TRUE, &stream))) return;
    // The table's reference keeps the stub; the stream with its packet is not needed.
    CoMarshalInterface(stream.Get(), *id, &placeholder, MSHCTX_LOCAL, nullptr, MSHLFLAGS_TABLESTRONG);
  }
}

}  // namespace testbrowser::dom
