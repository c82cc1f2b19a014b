#include "dom/frame_browser.h"

#include "com/bstr.h"
#include "com/encoding.h"
#include "dom/object.h"
#include "dom/services.h"

namespace testbrowser::dom {

using quillmate::com::Bstr;
using quillmate::com::Query;

HRESULT FrameBrowser::QueryService(REFGUID service, REFIID iid, void** out) {
  if (service == __uuidof(IWebBrowserApp)) return QueryInterface(iid, out);
  return QueryFrameService(*model_, frame_, service, iid, out);
}

HRESULT FrameBrowser::get_Application(IDispatch** application) {
  return QueryInterface(IID_PPV_ARGS(application));
}

HRESULT FrameBrowser::get_Document(IDispatch** document) {
  if (document == nullptr) return E_POINTER;
  *document = nullptr;
  if (!model_->page().HasFrame(frame_)) return S_FALSE;
  *document = Query<IDispatch>(model_->ContainerOf(frame_)).Detach();
  return S_OK;
}

// A text that the frame's document answers; empty when it cannot.
std::wstring FrameBrowser::DocumentText(std::string_view member) {
  const Reply reply = model_->Call({frame_, {}, Target::kDocument, {}}, member, engine::JsonArray());
  return cJSON_IsString(reply.value()) ? quillmate::com::FromUtf8(cJSON_GetStringValue(reply.value()))
                                       : std::wstring();
}

HRESULT FrameBrowser::get_LocationURL(BSTR* url) {
  if (url == nullptr) return E_POINTER;
  *url = Bstr(quillmate::com::FromUtf8(model_->page().FrameUrl(frame_))).release();
  return S_OK;
}

HRESULT FrameBrowser::get_LocationName(BSTR* name) {
  if (name == nullptr) return E_POINTER;
  const std::wstring title = DocumentText("IHTMLDocument2.get_title");
  if (title.empty()) return get_LocationURL(name);
  *name = Bstr(title).release();
  return S_OK;
}

HRESULT FrameBrowser::get_ReadyState(READYSTATE* state) {
  if (state == nullptr) return E_POINTER;
  const std::wstring text = DocumentText("IHTMLDocument2.get_readyState");
  *state = text == L"complete"      ? READYSTATE_COMPLETE
           : text == L"interactive" ? READYSTATE_INTERACTIVE
                                    : READYSTATE_LOADING;
  return S_OK;
}

HRESULT FrameBrowser::get_Busy(VARIANT_BOOL* busy) {
  if (busy == nullptr) return E_POINTER;
  READYSTATE state = READYSTATE_LOADING;
  get_ReadyState(&state);
  *busy = state == READYSTATE_COMPLETE ? VARIANT_FALSE : VARIANT_TRUE;
  return S_OK;
}

HRESULT FrameBrowser::get_HWND(SHANDLE_PTR* window) {
  if (window == nullptr) return E_POINTER;
  *window = 0;
  const auto top = model_->BrowserOf(model_->page().MainFrame());
  return top != nullptr ? top->get_HWND(window) : E_FAIL;
}

HRESULT FrameBrowser::Navigate(BSTR url, VARIANT*, VARIANT*, VARIANT*, VARIANT*) {
  model_->page().NavigateFrame(frame_, quillmate::com::ToUtf8(TextOf(url)));
  return S_OK;
}

HRESULT FrameBrowser::Navigate2(VARIANT* url, VARIANT*, VARIANT*, VARIANT*, VARIANT*) {
  if (url == nullptr || V_VT(url) != VT_BSTR) return E_INVALIDARG;
  return Navigate(V_BSTR(url), nullptr, nullptr, nullptr, nullptr);
}

}  // namespace testbrowser::dom
