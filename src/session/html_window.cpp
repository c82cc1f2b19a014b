// Window classes, the search for a page's window, and the message that hands out its document.
#include "session/html_window.h"

#include <oleacc.h>
#include <servprov.h>
#include <shlguid.h>
#include <shobjidl.h>
#include <cwchar>

#include "com/handle.h"
#include "com/type_library.h"
#include "session/answering.h"

namespace quillmate::session {
namespace {

using com::ComPtr;

/// Depth first, each window before its children.
HWND FindDescendantOfClass(HWND parent, const wchar_t* class_name) {
  HWND child = nullptr;
  while ((child = FindWindowExW(parent, child, nullptr, nullptr)) != nullptr) {
    if (IsWindowOfClass(child, class_name)) return child;
    if (HWND found = FindDescendantOfClass(child, class_name)) return found;
  }
  return nullptr;
}

/// Asks a page's window for the object behind it, as the interface wanted.
template <class T>
ComPtr<T> GetHtmlObject(HWND window) {
  HWND server = FindPageWindow(window);
  if (server == nullptr) return {};
  com::HoldTypeLibrary();
  const com::UniqueModule oleacc(LoadLibraryW(L"OLEACC.DLL"));
  if (oleacc == nullptr) return {};
  const auto object_from_lresult = reinterpret_cast<LPFNOBJECTFROMLRESULT>(
      reinterpret_cast<void*>(GetProcAddress(oleacc.get(), "ObjectFromLresult")));
  if (object_from_lresult == nullptr) return {};
  const UINT message = RegisterWindowMessageW(L"WM_HTML_GETOBJECT");
  DWORD_PTR answer = 0;
  if (!SendMessageTimeoutA(server, message, 0, 0, SMTO_ABORTIFHUNG, kAnswerTimeoutMs, &answer)) return {};
  ComPtr<T> object;
  const HRESULT result = object_from_lresult(static_cast<LRESULT>(answer), __uuidof(T), 0,
                                             reinterpret_cast<void**>(object.GetAddressOf()));
  return SUCCEEDED(result) ? object : ComPtr<T>();
}

}  // namespace

bool IsWindowOfClass(HWND window, const wchar_t* class_name) {
  wchar_t name[500] = L"";
  return GetClassNameW(window, name, static_cast<int>(std::size(name))) > 0 &&
         std::wcscmp(name, class_name) == 0;
}

HWND FindPageWindow(HWND window) {
  return window != nullptr ? FindDescendantOfClass(window, L"Internet Explorer_Server") : nullptr;
}

HWND FindAncestorOfClass(HWND window, const wchar_t* class_name) {
  while (window != nullptr && !IsWindowOfClass(window, class_name)) {
    HWND parent = GetParent(window);
    window = parent != window ? parent : nullptr;
  }
  return window;
}

ComPtr<IWebBrowser2> GetWebBrowserFromWindow(HWND window) {
  const auto services = GetHtmlObject<IServiceProvider>(window);
  ComPtr<IWebBrowser2> browser;
  if (services == nullptr || FAILED(services->QueryService(SID_SWebBrowserApp, IID_PPV_ARGS(&browser))))
    return {};
  return browser;
}

HWND GetTabWindow(IWebBrowser2* browser) {
  const auto services = com::Query<IServiceProvider>(browser);
  ComPtr<IOleWindow> tab;
  HWND window = nullptr;
  if (services == nullptr || FAILED(services->QueryService(SID_SShellBrowser, IID_PPV_ARGS(&tab))) ||
      tab == nullptr || FAILED(tab->GetWindow(&window))) {
    return nullptr;
  }
  return window;
}

ComPtr<IHTMLDocument2> GetDocumentFromWindow(HWND window) { return GetHtmlObject<IHTMLDocument2>(window); }

}  // namespace quillmate::session
