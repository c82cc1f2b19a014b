// IServiceProvider of windows, documents and frames' browser objects: the way from a page back to its
// browser.
#pragma once

#include <windows.h>
#include <servprov.h>

#include "dom/page_model.h"

namespace testbrowser::dom {

/// Answers QueryService for an object of the frame: SID_SWebBrowserApp gives the frame's own browser object,
/// SID_STopLevelBrowser the top one's services.
HRESULT QueryFrameService(PageModel& model, const engine::FrameId& frame, REFGUID service, REFIID iid,
                          void** out);

/// The interface as a part of an object that delegates to it.
class ServicesOf : public IServiceProvider {
 public:
  explicit ServicesOf(Object& owner) : owner_(owner) {}
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;
  HRESULT STDMETHODCALLTYPE QueryService(REFGUID service, REFIID iid, void** out) override;

 private:
  Object& owner_;
};

}  // namespace testbrowser::dom
