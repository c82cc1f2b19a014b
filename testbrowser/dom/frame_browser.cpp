#include "dom/frame_browser.h"

#include "dom/object.h"
#include "dom/services.h"
#include "engine/call_fate.h"

namespace testbrowser::dom {

using quillmate::com::Query;

HRESULT FrameBrowser::QueryService(REFGUID service, REFIID iid, void** out) {
  if (service == __uuidof(IWebBrowserApp)) return QueryInterface(iid, out);
  return QueryFrameService(*model_, frame_, service, iid, out);
}

HRESULT FrameBrowser::get_Document(IDispatch** document) {
  if (document == nullptr) return E_POINTER;
  *document = nullptr;
  const engine::CallFate fate = engine::TakeCallFate();
  if (const auto failure = engine::FailureOf(fate)) return *failure;
  if (fate == engine::CallFate::kNull) return S_FALSE;
  if (!model_->page().HasFrame(frame_)) return S_FALSE;
  *document = Query<IDispatch>(model_->ContainerOf(frame_)).Detach();
  return S_OK;
}

}  // namespace testbrowser::dom
