#include "session/browser_objects.h"

#include <oleacc.h>
#include <oleauto.h>
#include <servprov.h>
#include <shlguid.h>
#include <shobjidl.h>
#include <memory>
#include <type_traits>

#include "com/call_limit.h"
#include "com/no_destructor.h"
#include "com/variant.h"
#include "session/windows.h"

namespace quillmate {
namespace {

struct ModuleFreer {
  void operator()(HMODULE module) const { FreeLibrary(module); }
};
using UniqueModule = std::unique_ptr<std::remove_pointer_t<HMODULE>, ModuleFreer>;

com::ComPtr<ITypeLib> LoadTypeLibrary() {
  // {3050F1C5-98B5-11CF-BB82-00AA00BDCE0B}, which no import library carries.
  constexpr GUID kMshtml = {0x3050F1C5, 0x98B5, 0x11CF, {0xBB, 0x82, 0x00, 0xAA, 0x00, 0xBD, 0xCE, 0x0B}};
  com::ComPtr<ITypeLib> library;
  LoadRegTypeLib(kMshtml, 4, 0, LOCALE_NEUTRAL, library.GetAddressOf());
  return library;
}

/// Asks a page's window for the object behind it, as the interface wanted.
template <class T>
com::ComPtr<T> GetHtmlObject(HWND window) {
  HWND server = FindPageWindow(window);
  if (server == nullptr) return {};
  HoldTypeLibrary();
  const UniqueModule oleacc(LoadLibraryW(L"OLEACC.DLL"));
  if (oleacc == nullptr) return {};
  const auto object_from_lresult = reinterpret_cast<LPFNOBJECTFROMLRESULT>(
      reinterpret_cast<void*>(GetProcAddress(oleacc.get(), "ObjectFromLresult")));
  if (object_from_lresult == nullptr) return {};
  const UINT message = RegisterWindowMessageW(L"WM_HTML_GETOBJECT");
  DWORD_PTR answer = 0;
  if (!SendMessageInTime(server, message, 0, &answer)) return {};
  com::ComPtr<T> object;
  const HRESULT result = object_from_lresult(static_cast<LRESULT>(answer), __uuidof(T), 0,
                                             reinterpret_cast<void**>(object.GetAddressOf()));
  return SUCCEEDED(result) ? object : com::ComPtr<T>();
}

}  // namespace

void HoldTypeLibrary() { static const com::NoDestructor<com::ComPtr<ITypeLib>> library(LoadTypeLibrary()); }

HWND FindPageWindow(HWND window) { return FindDescendantOfClass(window, L"Internet Explorer_Server"); }

com::ComPtr<IWebBrowser2> GetWebBrowserFromWindow(HWND window) {
  const auto services = GetHtmlObject<IServiceProvider>(window);
  com::ComPtr<IWebBrowser2> browser;
  if (services == nullptr || FAILED(services->QueryService(SID_SWebBrowserApp, IID_PPV_ARGS(&browser))))
    return {};
  return browser;
}

com::ComPtr<IHTMLDocument2> GetDocumentFromWindow(HWND window) {
  return GetHtmlObject<IHTMLDocument2>(window);
}

HWND GetFrameWindow(IWebBrowser2* browser) {
  SHANDLE_PTR handle = 0;
  if (browser == nullptr || FAILED(browser->get_HWND(&handle))) return nullptr;
  return reinterpret_cast<HWND>(handle);
}

HWND GetTabWindow(IWebBrowser2* browser) {
  const auto services = com::Query<IServiceProvider>(browser);
  com::ComPtr<IOleWindow> tab;
  HWND window = nullptr;
  if (services == nullptr || FAILED(services->QueryService(SID_SShellBrowser, IID_PPV_ARGS(&tab))) ||
      tab == nullptr || FAILED(tab->GetWindow(&window))) {
    return nullptr;
  }
  return window;
}

void ForEachShellBrowser(const std::function<bool(com::ComPtr<IWebBrowser2>)>& visit) {
  // The list also holds browsers that hang. Nothing tells which before they are asked.
  const com::CallLimit limit(kMessageLimit);
  com::ComPtr<IShellWindows> windows;
  LONG count = 0;
  if (FAILED(CoCreateInstance(CLSID_ShellWindows, nullptr, CLSCTX_ALL, IID_PPV_ARGS(&windows))) ||
      FAILED(windows->get_Count(&count))) {
    return;
  }
  for (LONG i = 0; i < count; ++i) {
    com::ComPtr<IDispatch> item;
    if (FAILED(windows->Item(com::Variant::Int(i).get(), &item))) continue;
    auto browser = com::Query<IWebBrowser2>(item);
    if (browser != nullptr && visit(std::move(browser))) return;
  }
}

}  // namespace quillmate
