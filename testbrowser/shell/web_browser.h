// The browser object of a tab, as automation sees it.
#pragma once

#include <windows.h>
#include <exdisp.h>
#include <servprov.h>
#include <optional>
#include <utility>

#include "dom/com_object.h"
#include "generated/shell_stubs.h"

namespace testbrowser::shell {

class Tab;

class WebBrowser : public dom::DispatchObject<IWebBrowser2, IWebBrowser2Stub, IServiceProviderStub> {
 public:
  explicit WebBrowser(Tab& tab) : tab_(&tab) {}
  /// The tab is closed: every later call is answered as a call to a disconnected object. (Disconnecting it
  /// for COM would let Wine's clients see "unknown interface" instead.)
  void Disconnect() { tab_ = nullptr; }
  /// Exchanges the tabs that two browser objects stand for.
  void Swap(WebBrowser& other) { std::swap(tab_, other.tab_); }

  HRESULT STDMETHODCALLTYPE QueryService(REFGUID service, REFIID iid, void** out) override;

  // Navigation
  HRESULT STDMETHODCALLTYPE Navigate(BSTR address, VARIANT* flags, VARIANT* target, VARIANT* post_data,
                                     VARIANT* headers) override;
  HRESULT STDMETHODCALLTYPE Navigate2(VARIANT* address, VARIANT* flags, VARIANT* target, VARIANT* post_data,
                                      VARIANT* headers) override;
  HRESULT STDMETHODCALLTYPE GoBack() override { return Go(-1); }
  HRESULT STDMETHODCALLTYPE GoForward() override { return Go(+1); }
  HRESULT STDMETHODCALLTYPE Refresh() override;
  HRESULT STDMETHODCALLTYPE Refresh2(VARIANT* level) override;
  HRESULT STDMETHODCALLTYPE Stop() override;
  HRESULT STDMETHODCALLTYPE Quit() override;
  HRESULT STDMETHODCALLTYPE ExecWB(OLECMDID command, OLECMDEXECOPT option, VARIANT* in,
                                   VARIANT* out) override;
  HRESULT STDMETHODCALLTYPE QueryStatusWB(OLECMDID command, OLECMDF* status) override;

  // State
  HRESULT STDMETHODCALLTYPE get_Busy(VARIANT_BOOL* busy) override;
  HRESULT STDMETHODCALLTYPE get_ReadyState(READYSTATE* state) override;
  HRESULT STDMETHODCALLTYPE get_Document(IDispatch** document) override;
  HRESULT STDMETHODCALLTYPE get_LocationName(BSTR* name) override;
  HRESULT STDMETHODCALLTYPE get_LocationURL(BSTR* address) override;

  // Application
  HRESULT STDMETHODCALLTYPE get_Application(IDispatch** application) override;
  HRESULT STDMETHODCALLTYPE get_Parent(IDispatch** parent) override { return get_Application(parent); }
  HRESULT STDMETHODCALLTYPE get_TopLevelContainer(VARIANT_BOOL* top_level) override;
  HRESULT STDMETHODCALLTYPE get_Type(BSTR* type) override;
  HRESULT STDMETHODCALLTYPE get_Name(BSTR* name) override;
  HRESULT STDMETHODCALLTYPE get_FullName(BSTR* path) override;
  HRESULT STDMETHODCALLTYPE get_Path(BSTR* folder) override;

  // Window
  HRESULT STDMETHODCALLTYPE get_HWND(SHANDLE_PTR* window) override;
  HRESULT STDMETHODCALLTYPE get_Visible(VARIANT_BOOL* visible) override;
  HRESULT STDMETHODCALLTYPE put_Visible(VARIANT_BOOL visible) override;
  HRESULT STDMETHODCALLTYPE get_Left(LONG* left) override;
  HRESULT STDMETHODCALLTYPE put_Left(LONG left) override;
  HRESULT STDMETHODCALLTYPE get_Top(LONG* top) override;
  HRESULT STDMETHODCALLTYPE put_Top(LONG top) override;
  HRESULT STDMETHODCALLTYPE get_Width(LONG* width) override;
  HRESULT STDMETHODCALLTYPE put_Width(LONG width) override;
  HRESULT STDMETHODCALLTYPE get_Height(LONG* height) override;
  HRESULT STDMETHODCALLTYPE put_Height(LONG height) override;
  HRESULT STDMETHODCALLTYPE ClientToWindow(int* width, int* height) override;

  // Settings without effect here, kept as they are put
  HRESULT STDMETHODCALLTYPE get_Silent(VARIANT_BOOL* silent) override;
  HRESULT STDMETHODCALLTYPE put_Silent(VARIANT_BOOL silent) override;

 private:
  /// The answer to every call once the tab is closed, or to the one that a test chose.
  std::optional<HRESULT> Refused() const;
  /// The same for a call that asks for an object. @param answer its result when a test wants it without one.
  std::optional<HRESULT> RefusedObject(HRESULT answer) const;
  HRESULT Go(int delta);
  HRESULT NavigateByFlags(const wchar_t* address, const VARIANT* flags);
  template <class Change>
  HRESULT ChangePlace(Change change);
  template <class Measure>
  HRESULT ReadPlace(LONG* out, Measure measure);

  Tab* tab_;
  VARIANT_BOOL silent_ = VARIANT_FALSE;
};

}  // namespace testbrowser::shell
