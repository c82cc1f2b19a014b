#include "session/browser_objects.h"

#include <oleacc.h>
#include <oleauto.h>
#include <servprov.h>
#include <shlguid.h>
#include <shobjidl.h>
#include <memory>
#include <mutex>
#include <type_traits>
#include <utility>
#include <vector>

#include "com/call_limit.h"
#include "com/owned.h"
#include "com/process.h"
#include "com/worker.h"
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

/// Whether the page of any tab on the desktop takes no messages.
bool IsAnyTabSilent() {
  for (HWND window : TopLevelWindows()) {
    for (const wchar_t* tab_class : {L"Frame Tab", L"AtlAxWin100"}) {
      for (HWND tab : ChildrenOfClass(window, tab_class)) {
        HWND page = FindPageWindow(tab);
        if (page != nullptr && AskWindow(page) == Response::kSilent) return true;
      }
    }
  }
  return false;
}

/// @return the browser at a place of the shell's list; null for what is none. A tab that hangs answers this when it
/// answers again.
com::ComPtr<IWebBrowser2> ListedBrowser(IShellWindows* windows, LONG place) {
  com::ComPtr<IDispatch> item;
  if (FAILED(windows->Item(com::Variant::Int(place).get(), &item))) return {};
  return com::Query<IWebBrowser2>(item);
}

/// A walk over the shell's list on workers. One that is held up by a tab is left behind, and the next goes on after
/// that tab.
class ListWalk {
 public:
  /// Walks from here on, until the end or until another walk is ahead.
  void GoOn() {
    com::ComPtr<IShellWindows> windows;
    LONG count = 0;
    if (SUCCEEDED(CoCreateInstance(CLSID_ShellWindows, nullptr, CLSCTX_ALL, IID_PPV_ARGS(&windows)))) {
      windows->get_Count(&count);
    }
    for (LONG place = Next(); place < count; ++place) {
      if (!Take(place)) return;
      Keep(ListedBrowser(windows.Get(), place));
    }
    const std::scoped_lock guard(lock_);
    ended_ = true;
  }
  bool HasEnded() {
    const std::scoped_lock guard(lock_);
    return ended_;
  }
  /// @return what was found so far, marshalled; a walk that comes later keeps nothing more.
  std::vector<com::ComPtr<IStream>> End() {
    const std::scoped_lock guard(lock_);
    ended_ = true;
    return std::move(browsers_);
  }

 private:
  LONG Next() {
    const std::scoped_lock guard(lock_);
    return next_;
  }
  bool Take(LONG place) {
    const std::scoped_lock guard(lock_);
    if (ended_ || next_ != place) return false;
    ++next_;
    return true;
  }
  void Keep(const com::ComPtr<IWebBrowser2>& browser) {
    const std::scoped_lock guard(lock_);
    com::ComPtr<IStream> stream;
    if (browser == nullptr || ended_) return;
    if (SUCCEEDED(CoMarshalInterThreadInterfaceInStream(__uuidof(IWebBrowser2), browser.Get(), &stream))) {
      browsers_.push_back(std::move(stream));
    }
  }

  std::mutex lock_;
  LONG next_ = 0;
  bool ended_ = false;
  std::vector<com::ComPtr<IStream>> browsers_;
};

/// Visits the browsers of the shell's list that answer while some tab does not. The list does not tell which one that
/// is, and Wine cancels no call.
void VisitTabsThatAnswer(const std::function<bool(com::ComPtr<IWebBrowser2>)>& visit) {
  constexpr int kWalks = 5;
  const auto walk = std::make_shared<ListWalk>();
  for (int i = 0; i < kWalks && !walk->HasEnded(); ++i) {
    com::RunInTime([walk] { walk->GoOn(); }, kMessageLimit);
  }
  bool is_found = false;
  for (auto& stream : walk->End()) {
    com::ComPtr<IWebBrowser2> browser;
    CoGetInterfaceAndReleaseStream(stream.Detach(), IID_PPV_ARGS(&browser));
    is_found = is_found || (browser != nullptr && visit(std::move(browser)));
  }
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
  if (IsAnyTabSilent()) return VisitTabsThatAnswer(visit);
  const com::CallLimit limit(kMessageLimit);
  com::ComPtr<IShellWindows> windows;
  LONG count = 0;
  if (FAILED(CoCreateInstance(CLSID_ShellWindows, nullptr, CLSCTX_ALL, IID_PPV_ARGS(&windows))) ||
      FAILED(windows->get_Count(&count))) {
    return;
  }
  for (LONG i = 0; i < count; ++i) {
    auto browser = ListedBrowser(windows.Get(), i);
    if (browser != nullptr && visit(std::move(browser))) return;
  }
}

}  // namespace quillmate
