// The browser object inside a FRAME or IFRAME, as IID_IWebBrowserApp gives it: the way to a frame's document
// that no origin check guards.
#pragma once

#include <exdisp.h>
#include <servprov.h>

#include "dom/com_object.h"
#include "dom/page_model.h"
#include "generated/dom_stubs.h"

namespace testbrowser::dom {

class FrameBrowser : public DispatchObject<IWebBrowser2, IWebBrowser2Stub, IServiceProviderStub> {
 public:
  FrameBrowser(std::shared_ptr<PageModel> model, engine::FrameId frame)
      : model_(std::move(model)), frame_(std::move(frame)) {}

  HRESULT STDMETHODCALLTYPE QueryService(REFGUID service, REFIID iid, void** out) override;
  HRESULT STDMETHODCALLTYPE get_Application(IDispatch** application) override;
  HRESULT STDMETHODCALLTYPE get_Document(IDispatch** document) override;
  HRESULT STDMETHODCALLTYPE get_LocationURL(BSTR* url) override;
  HRESULT STDMETHODCALLTYPE get_LocationName(BSTR* name) override;
  HRESULT STDMETHODCALLTYPE get_ReadyState(READYSTATE* state) override;
  HRESULT STDMETHODCALLTYPE get_Busy(VARIANT_BOOL* busy) override;
  HRESULT STDMETHODCALLTYPE get_HWND(SHANDLE_PTR* window) override;
  HRESULT STDMETHODCALLTYPE Navigate(BSTR url, VARIANT*, VARIANT*, VARIANT*, VARIANT*) override;
  HRESULT STDMETHODCALLTYPE Navigate2(VARIANT* url, VARIANT*, VARIANT*, VARIANT*, VARIANT*) override;

 private:
  std::wstring DocumentText(std::string_view member);
  std::shared_ptr<PageModel> model_;
  engine::FrameId frame_;
};

}  // namespace testbrowser::dom
