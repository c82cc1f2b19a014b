#include "dom/services.h"

#include "dom/object.h"
#include "engine/call_fate.h"

namespace testbrowser::dom {
namespace {

using quillmate::com::ComPtr;
using quillmate::com::Query;

// The shell's headers give these names to interface ids, of which one program can have one definition only.
constexpr GUID kTopLevelBrowser = {
    0x4c96be40, 0x915c, 0x11cf, {0x99, 0xd3, 0x00, 0xaa, 0x00, 0x4a, 0xe8, 0x37}};

HRESULT Give(const ComPtr<IUnknown>& object, REFIID iid, void** out) {
  return object != nullptr ? object->QueryInterface(iid, out) : E_NOINTERFACE;
}

}  // namespace

HRESULT QueryFrameService(PageModel& model, const engine::FrameId& frame, REFGUID service, REFIID iid,
                          void** out) {
  if (out == nullptr) return E_POINTER;
  *out = nullptr;
  const engine::CallFate fate = engine::TakeCallFate();
  if (const auto failure = engine::FailureOf(fate)) return *failure;
  if (fate == engine::CallFate::kNull) return S_OK;
  if (service == __uuidof(IWebBrowserApp)) return Give(Query<IUnknown>(model.BrowserOf(frame)), iid, out);
  if (service == kTopLevelBrowser)
    return Give(Query<IUnknown>(model.BrowserOf(model.page().MainFrame())), iid, out);
  return E_NOINTERFACE;
}

HRESULT ServicesOf::QueryInterface(REFIID iid, void** out) { return owner_.QueryInterface(iid, out); }

ULONG ServicesOf::AddRef() { return owner_.AddRef(); }

ULONG ServicesOf::Release() { return owner_.Release(); }

HRESULT ServicesOf::QueryService(REFGUID service, REFIID iid, void** out) {
  return QueryFrameService(owner_.model(), owner_.target().frame, service, iid, out);
}

}  // namespace testbrowser::dom
