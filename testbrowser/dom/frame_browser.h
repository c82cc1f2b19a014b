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
  HRESULT STDMETHODCALLTYPE get_Document(IDispatch** document) override;

 private:
  std::shared_ptr<PageModel> model_;
  engine::FrameId frame_;
};

}  // namespace testbrowser::dom
