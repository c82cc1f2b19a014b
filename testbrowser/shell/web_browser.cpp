#include "shell/web_browser.h"

#include <mshtml.h>
#include <shlguid.h>
#include <shobjidl.h>

#include "com/owned.h"
#include "engine/call_fate.h"
#include "engine/switches.h"
#include "shell/application.h"
#include "shell/frame.h"
#include "shell/program_path.h"
#include "shell/tab.h"

namespace testbrowser::shell {
namespace {

using quillmate::com::Bstr;
using quillmate::com::ComPtr;

constexpr LONG kInNewWindow = 0x1;
constexpr LONG kInNewTab = 0x800;
constexpr LONG kInBackgroundTab = 0x1000;
constexpr LONG kInNewForegroundTab = 0x10000;

/// SID_STopLevelBrowser, which the platform's import libraries lack.
constexpr GUID kTopLevelBrowser{0x4C96BE40, 0x915C, 0x11CF, {0x99, 0xD3, 0x00, 0xAA, 0x00, 0x4A, 0xE8, 0x37}};

LONG FlagsOf(const VARIANT* flags) {
  if (flags == nullptr) return 0;
  if (flags->vt == VT_I4) return flags->lVal;
  return flags->vt == VT_I2 ? flags->iVal : 0;
}

HRESULT Give(std::wstring_view text, BSTR* out) {
  if (out == nullptr) return E_POINTER;
  *out = Bstr(text).release();
  return S_OK;
}

/// A tab's window, for those who ask its browser for SID_SShellBrowser.
class TabSite : public dom::ComObject<IOleWindowStub> {
 public:
  explicit TabSite(HWND window) : window_(window) {}
  HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override {
    if (window == nullptr) return E_POINTER;
    if (const auto failure = engine::TakeCallFailure()) return *failure;
    *window = IsWindow(window_) != 0 ? window_ : nullptr;
    return *window != nullptr ? S_OK : E_FAIL;
  }

 private:
  HWND window_;
};

}  // namespace

std::optional<HRESULT> WebBrowser::Refused() const {
  if (tab_ == nullptr) return RPC_E_DISCONNECTED;
  return engine::TakeCallFailure();
}

std::optional<HRESULT> WebBrowser::RefusedObject(HRESULT answer) const {
  if (tab_ == nullptr) return RPC_E_DISCONNECTED;
  const engine::CallFate fate = engine::TakeCallFate();
  return fate == engine::CallFate::kNull ? answer : engine::FailureOf(fate);
}

HRESULT WebBrowser::QueryService(REFGUID service, REFIID iid, void** out) {
  if (out == nullptr) return E_POINTER;
  *out = nullptr;
  if (const auto refused = RefusedObject(S_OK)) return *refused;
  if (service == __uuidof(IWebBrowserApp) || service == kTopLevelBrowser) return QueryInterface(iid, out);
  if (service == __uuidof(IShellBrowser)) {
    return dom::MakeObject<TabSite>(tab_->TabWindow())->QueryInterface(iid, out);
  }
  if (service == __uuidof(IHTMLWindow2)) {
    ComPtr<IHTMLWindow2> window;
    const HRESULT result = tab_->Document()->get_parentWindow(&window);
    return FAILED(result) ? result : window->QueryInterface(iid, out);
  }
  return E_NOINTERFACE;
}

HRESULT WebBrowser::Navigate(BSTR address, VARIANT* flags, VARIANT*, VARIANT*, VARIANT*) {
  return NavigateByFlags(address, flags);
}

HRESULT WebBrowser::Navigate2(VARIANT* address, VARIANT* flags, VARIANT*, VARIANT*, VARIANT*) {
  if (address == nullptr) return E_INVALIDARG;
  if (address->vt == (VT_BYREF | VT_VARIANT)) address = address->pvarVal;
  if (address->vt == (VT_BYREF | VT_BSTR)) return NavigateByFlags(*address->pbstrVal, flags);
  return address->vt == VT_BSTR ? NavigateByFlags(address->bstrVal, flags) : E_INVALIDARG;
}

HRESULT WebBrowser::NavigateByFlags(const wchar_t* address, const VARIANT* flags) {
  if (const auto refused = Refused()) return *refused;
  if (address == nullptr || *address == L'\0') return E_INVALIDARG;
  const LONG chosen = FlagsOf(flags);
  if ((chosen & (kInNewWindow | kInNewTab | kInBackgroundTab | kInNewForegroundTab)) == 0) {
    tab_->Navigate(address);
    return S_OK;
  }
  // The caller keeps this tab: the new one has to be looked for.
  Application& application = tab_->application();
  auto page = application.OpenPage();
  if (page == nullptr) return E_FAIL;
  if ((chosen & kInNewWindow) != 0) {
    application.OpenFrame(std::move(page), SW_SHOWNORMAL).Navigate(address);
  } else {
    Tab& tab = tab_->Frame().AddTab(std::move(page), (chosen & kInBackgroundTab) == 0);
    if (engine::SwitchText("new-tab-pointer") == "new") tab.SwapBrowsers(*tab_);
    tab.Navigate(address);
  }
  return S_OK;
}

HRESULT WebBrowser::Go(int delta) {
  if (const auto refused = Refused()) return *refused;
  return tab_->page().Go(delta) ? S_OK : E_FAIL;
}

HRESULT WebBrowser::Refresh() {
  if (const auto refused = Refused()) return *refused;
  tab_->page().Reload();
  return S_OK;
}

HRESULT WebBrowser::Refresh2(VARIANT* level) {
  if (const auto refused = Refused()) return *refused;
  tab_->page().Reload(FlagsOf(level) == REFRESH_COMPLETELY);
  return S_OK;
}

HRESULT WebBrowser::Stop() {
  if (const auto refused = Refused()) return *refused;
  tab_->Stop();
  return S_OK;
}

HRESULT WebBrowser::Quit() {
  if (const auto refused = Refused()) return *refused;
  tab_->CloseSoon();
  return S_OK;
}

HRESULT WebBrowser::ExecWB(OLECMDID command, OLECMDEXECOPT, VARIANT* in, VARIANT*) {
  if (const auto refused = Refused()) return *refused;
  if (!tab_->state().has_document()) return E_UNEXPECTED;
  if (command == OLECMDID_REFRESH) return Refresh2(in);
  if (command == OLECMDID_STOP) return Stop();
  return OLECMDERR_E_NOTSUPPORTED;
}

HRESULT WebBrowser::QueryStatusWB(OLECMDID command, OLECMDF* status) {
  if (const auto refused = Refused()) return *refused;
  if (!tab_->state().has_document()) return E_UNEXPECTED;
  const bool known = command == OLECMDID_REFRESH || command == OLECMDID_STOP;
  *status = static_cast<OLECMDF>(known ? OLECMDF_SUPPORTED | OLECMDF_ENABLED : 0);
  return S_OK;
}

HRESULT WebBrowser::get_Busy(VARIANT_BOOL* busy) {
  if (busy == nullptr) return E_POINTER;
  if (const auto refused = Refused()) return *refused;
  *busy = tab_->IsBusy() ? VARIANT_TRUE : VARIANT_FALSE;
  return S_OK;
}

HRESULT WebBrowser::get_ReadyState(READYSTATE* state) {
  if (state == nullptr) return E_POINTER;
  if (const auto refused = Refused()) return *refused;
  *state = tab_->state().ready_state();
  return S_OK;
}

HRESULT WebBrowser::get_Document(IDispatch** document) {
  if (document == nullptr) return E_POINTER;
  *document = nullptr;
  if (const auto refused = RefusedObject(S_FALSE)) return *refused;
  if (!tab_->state().has_document()) return S_FALSE;
  return tab_->Document()->QueryInterface(__uuidof(IDispatch), reinterpret_cast<void**>(document));
}

HRESULT WebBrowser::get_LocationName(BSTR* name) {
  if (const auto refused = Refused()) return *refused;
  const HRESULT given = Give(tab_->Name(), name);
  return FAILED(given) || tab_->state().has_document() ? given : S_FALSE;
}

HRESULT WebBrowser::get_LocationURL(BSTR* address) {
  if (const auto refused = Refused()) return *refused;
  const HRESULT given = Give(tab_->Address(), address);
  return FAILED(given) || tab_->state().has_document() ? given : S_FALSE;
}

HRESULT WebBrowser::get_Application(IDispatch** application) {
  if (application == nullptr) return E_POINTER;
  return QueryInterface(__uuidof(IDispatch), reinterpret_cast<void**>(application));
}

HRESULT WebBrowser::get_TopLevelContainer(VARIANT_BOOL* top_level) {
  if (top_level == nullptr) return E_POINTER;
  *top_level = VARIANT_TRUE;
  return S_OK;
}

HRESULT WebBrowser::get_Type(BSTR* type) { return Give(L"HTML Document", type); }
HRESULT WebBrowser::get_Name(BSTR* name) { return Give(L"Internet Explorer", name); }
HRESULT WebBrowser::get_FullName(BSTR* path) { return Give(kProgramPath, path); }
HRESULT WebBrowser::get_Path(BSTR* folder) { return Give(kProgramFolder, folder); }

HRESULT WebBrowser::get_Silent(VARIANT_BOOL* silent) {
  if (silent == nullptr) return E_POINTER;
  *silent = silent_;
  return S_OK;
}

HRESULT WebBrowser::put_Silent(VARIANT_BOOL silent) {
  silent_ = silent;
  return S_OK;
}

}  // namespace testbrowser::shell
