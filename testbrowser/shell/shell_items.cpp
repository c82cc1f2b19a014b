#include "shell/shell_items.h"

#include <exdisp.h>
#include <oleacc.h>
#include <servprov.h>
#include <algorithm>
#include <future>
#include <string_view>
#include <thread>

#include "com/owned.h"
#include "dom/com_object.h"
#include "generated/shell_stubs.h"
#include "shell/shell_windows.h"

namespace testbrowser::shell {
namespace {

using quillmate::com::Bstr;
using quillmate::com::ComPtr;

/// A folder's window: its document is no page's.
class Folder : public dom::DispatchObject<IWebBrowser2, IWebBrowser2Stub> {
 public:
  HRESULT STDMETHODCALLTYPE get_FullName(BSTR* path) override {
    return Give(L"C:\\Windows\\explorer.exe", path);
  }
  HRESULT STDMETHODCALLTYPE get_LocationURL(BSTR* address) override { return Give(L"file:///C:/", address); }
  HRESULT STDMETHODCALLTYPE get_LocationName(BSTR* name) override { return Give(L"Folder", name); }
  HRESULT STDMETHODCALLTYPE get_Document(IDispatch** view) override {
    if (view == nullptr) return E_POINTER;
    *view = dom::MakeObject<View>().Detach();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE get_HWND(SHANDLE_PTR* window) override {
    if (window == nullptr) return E_POINTER;
    *window = reinterpret_cast<SHANDLE_PTR>(GetDesktopWindow());
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE get_Busy(VARIANT_BOOL* busy) override {
    if (busy == nullptr) return E_POINTER;
    *busy = VARIANT_FALSE;
    return S_OK;
  }

 private:
  /// Late-bound only, as a folder's view is to whoever looks for a page.
  class View : public dom::DispatchObject<IWebBrowser2, IWebBrowser2Stub> {};
  static HRESULT Give(const wchar_t* text, BSTR* out) {
    if (out == nullptr) return E_POINTER;
    *out = Bstr(text).release();
    return S_OK;
  }
};

bool IsOfClass(HWND window, std::wstring_view name) {
  wchar_t found[64] = L"";
  const int length = GetClassNameW(window, found, static_cast<int>(std::size(found)));
  return std::wstring_view(found, static_cast<std::size_t>(length)) == name;
}

BOOL CALLBACK CollectServer(HWND window, LPARAM items) {
  if (IsOfClass(window, L"Internet Explorer_Server"))
    reinterpret_cast<std::vector<ShellItem>*>(items)->push_back({ShellItem::Kind::kTab, window});
  return TRUE;
}

BOOL CALLBACK CollectFromFrame(HWND window, LPARAM items) {
  if (!IsOfClass(window, L"IEFrame") && !IsOfClass(window, L"Chrome_WidgetWin_1")) return TRUE;
  if (GetPropW(window, kUnlistedProperty) == nullptr) EnumChildWindows(window, &CollectServer, items);
  const auto add = [&](const wchar_t* property, ShellItem::Kind kind) {
    const auto count = reinterpret_cast<std::size_t>(GetPropW(window, property));
    auto& list = *reinterpret_cast<std::vector<ShellItem>*>(items);
    list.insert(list.begin(), count, ShellItem{kind, nullptr});
  };
  add(kFoldersProperty, ShellItem::Kind::kFolder);
  add(kNullsProperty, ShellItem::Kind::kNothing);
  return TRUE;
}

ComPtr<IDispatch> AskForBrowser(HWND server) {
  static const UINT get_object = RegisterWindowMessageW(L"WM_HTML_GETOBJECT");
  constexpr UINT kTimeOut = 300;  // ms
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

/// A tab that does not answer now. It is in the list as any other; whoever asks it for its interfaces waits until it
/// answers, and then has them.
class SilentTab : public dom::DispatchObject<IWebBrowser2, IWebBrowser2Stub> {
 public:
  explicit SilentTab(HWND server) : server_(server) {}
  ~SilentTab() override { PostQuitMessage(0); }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
    const bool is_asked =
        iid == __uuidof(IWebBrowser2) || iid == __uuidof(IWebBrowserApp) || iid == __uuidof(IServiceProvider);
    if (!is_asked) return DispatchObject::QueryInterface(iid, out);
    while (IsWindow(server_) != 0) {
      if (const auto browser = AskForBrowser(server_)) return browser->QueryInterface(iid, out);
      Sleep(kPauseMs);
    }
    return E_NOINTERFACE;
  }

 private:
  static constexpr DWORD kPauseMs = 50;
  HWND server_;
};

/// Serves one silent tab until its last reference goes: nobody else is to wait with those who ask it.
void ServeSilentTab(HWND server, std::promise<ComPtr<IStream>> made) {
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  ComPtr<IStream> stream;
  CoMarshalInterThreadInterfaceInStream(__uuidof(IDispatch), dom::MakeObject<SilentTab>(server).Get(),
                                        &stream);
  made.set_value(std::move(stream));
  for (MSG message{}; GetMessageW(&message, nullptr, 0, 0) > 0;) DispatchMessageW(&message);
  CoUninitialize();
}

ComPtr<IDispatch> SilentTabOf(HWND server) {
  std::promise<ComPtr<IStream>> made;
  auto stream = made.get_future();
  std::thread(ServeSilentTab, server, std::move(made)).detach();
  ComPtr<IDispatch> tab;
  CoGetInterfaceAndReleaseStream(stream.get().Detach(), __uuidof(IDispatch),
                                 reinterpret_cast<void**>(tab.GetAddressOf()));
  return tab;
}

}  // namespace

std::vector<ShellItem> FindShellItems() {
  std::vector<ShellItem> items;
  EnumWindows(&CollectFromFrame, reinterpret_cast<LPARAM>(&items));
  std::ranges::stable_sort(items, {}, &ShellItem::server);  // by age, roughly
  return items;
}

ComPtr<IDispatch> ObjectOf(const ShellItem& item) {
  if (item.kind == ShellItem::Kind::kFolder) {
    return quillmate::com::Query<IDispatch>(dom::MakeObject<Folder>().Get());
  }
  if (item.kind == ShellItem::Kind::kNothing) return {};
  ComPtr<IDispatch> browser = AskForBrowser(item.server);
  if (browser == nullptr && IsWindow(item.server) != 0) browser = SilentTabOf(item.server);
  return browser;
}

}  // namespace testbrowser::shell
