#include "shell/shell_windows.h"

#include <oleacc.h>
#include <algorithm>
#include <string_view>

namespace testbrowser::shell {
namespace {

using quillmate::com::ComPtr;

bool IsOfClass(HWND window, std::wstring_view name) {
  wchar_t found[64] = L"";
  const int length = GetClassNameW(window, found, static_cast<int>(std::size(found)));
  return std::wstring_view(found, static_cast<std::size_t>(length)) == name;
}

BOOL CALLBACK CollectServer(HWND window, LPARAM servers) {
  if (IsOfClass(window, L"Internet Explorer_Server"))
    reinterpret_cast<std::vector<HWND>*>(servers)->push_back(window);
  return TRUE;
}

BOOL CALLBACK CollectFromFrame(HWND window, LPARAM servers) {
  if (IsOfClass(window, L"IEFrame") || IsOfClass(window, L"Chrome_WidgetWin_1")) {
    EnumChildWindows(window, &CollectServer, servers);
  }
  return TRUE;
}

std::vector<HWND> FindServers() {
  std::vector<HWND> servers;
  EnumWindows(&CollectFromFrame, reinterpret_cast<LPARAM>(&servers));
  std::ranges::sort(servers);  // by age, roughly: an order that a change of the active tab does not disturb
  return servers;
}

/// The browser object behind a tab's window; null when there is none or its process does not answer.
ComPtr<IDispatch> BrowserOf(HWND server) {
  static const UINT get_object = RegisterWindowMessageW(L"WM_HTML_GETOBJECT");
  constexpr UINT kTimeOut = 1000;  // ms
  DWORD_PTR result = 0;
  if (SendMessageTimeoutW(server, get_object, 0, 0, SMTO_ABORTIFHUNG, kTimeOut, &result) == 0) return {};
  ComPtr<IServiceProvider> services;
  if (FAILED(ObjectFromLresult(static_cast<LRESULT>(result), __uuidof(IServiceProvider), 0,
                               reinterpret_cast<void**>(services.GetAddressOf())))) {
    return {};
  }
  ComPtr<IDispatch> browser;
  services->QueryService(__uuidof(IWebBrowserApp), __uuidof(IDispatch),
                         reinterpret_cast<void**>(browser.GetAddressOf()));
  return browser;
}

/// Walks over the windows of one view; tabs that went meanwhile are left out.
class Enumerator : public dom::ComObject<IEnumVARIANTStub> {
 public:
  explicit Enumerator(std::vector<HWND> view, std::size_t next = 0) : view_(std::move(view)), next_(next) {}

  HRESULT STDMETHODCALLTYPE Next(ULONG wanted, VARIANT* items, ULONG* fetched) override {
    ULONG given = 0;
    while (given < wanted && next_ < view_.size()) {
      ComPtr<IDispatch> browser = BrowserOf(view_[next_++]);
      if (browser == nullptr) continue;
      items[given].vt = VT_DISPATCH;
      items[given].pdispVal = browser.Detach();
      ++given;
    }
    if (fetched != nullptr) *fetched = given;
    return given == wanted ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
    const bool enough = count <= view_.size() - next_;
    next_ = enough ? next_ + count : view_.size();
    return enough ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Reset() override {
    next_ = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** copy) override {
    if (copy == nullptr) return E_POINTER;
    *copy = dom::MakeObject<Enumerator>(view_, next_).Detach();
    return S_OK;
  }

 private:
  std::vector<HWND> view_;
  std::size_t next_;
};

}  // namespace

const std::vector<HWND>& ShellWindows::View() {
  if (!has_view_) view_ = FindServers();
  has_view_ = true;
  return view_;
}

HRESULT ShellWindows::get_Count(LONG* count) {
  if (count == nullptr) return E_POINTER;
  has_view_ = false;
  *count = static_cast<LONG>(View().size());
  return S_OK;
}

HRESULT ShellWindows::Item(VARIANT index, IDispatch** item) {
  if (item == nullptr) return E_POINTER;
  *item = nullptr;
  // A VT_UI4 would be a sort of window, not a place in the list.
  if (index.vt != VT_I4 && index.vt != VT_I2) return E_INVALIDARG;
  const LONG wanted = index.vt == VT_I4 ? index.lVal : index.iVal;
  const auto& view = View();
  if (wanted < 0 || wanted >= static_cast<LONG>(view.size())) return S_FALSE;
  *item = BrowserOf(view[static_cast<std::size_t>(wanted)]).Detach();
  return *item != nullptr ? S_OK : S_FALSE;
}

HRESULT ShellWindows::_NewEnum(IUnknown** enumerator) {
  if (enumerator == nullptr) return E_POINTER;
  *enumerator = dom::MakeObject<Enumerator>(FindServers()).Detach();
  return S_OK;
}

HRESULT ShellWindows::Revoke(LONG) { return S_FALSE; }

}  // namespace testbrowser::shell
