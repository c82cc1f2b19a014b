// The browser object, the shell's list of browsers, the windows around a page.
#include <servprov.h>
#include <shlguid.h>
#include <shlobj.h>

#include "com/encoding.h"
#include "facts/fact.h"

namespace quillmate::test {
namespace {

std::string ClassOf(HWND window) {
  wchar_t name[64] = L"";
  GetClassNameW(window, name, 64);
  return com::ToUtf8(name);
}

std::string State(const Page& page) {
  VARIANT_BOOL busy = VARIANT_TRUE;
  READYSTATE state = READYSTATE_UNINITIALIZED;
  page.browser->get_Busy(&busy);
  const HRESULT result = page.browser->get_ReadyState(&state);
  return Answer(result, static_cast<LONG>(state)) + (busy != VARIANT_FALSE ? " busy" : " idle");
}

std::string BrowserWindow(const Page& page) {
  SHANDLE_PTR window = 0;
  const HRESULT result = page.browser->get_HWND(&window);
  return Answer(result) + " " + ClassOf(reinterpret_cast<HWND>(window));
}

/// The tab's window, by the way that the shell's own parts go.
std::string TabWindow(const Page& page) {
  const auto services = Page::Demand(com::Query<IServiceProvider>(page.browser));
  ComPtr<IOleWindow> tab;
  HWND window = nullptr;
  services->QueryService(SID_SShellBrowser, __uuidof(IOleWindow),
                         reinterpret_cast<void**>(tab.GetAddressOf()));
  const HRESULT result = Page::Demand(tab)->GetWindow(&window);
  return Answer(result) + " " + ClassOf(window) +
         (IsChild(window, page.server) ? " of the page" : " of another");
}

/// The chain of windows around the page, from the page up.
std::string Ancestors(const Page& page) {
  std::string result;
  for (HWND window = page.server; window != nullptr; window = GetAncestor(window, GA_PARENT)) {
    if (window != GetDesktopWindow()) result += ClassOf(window) + " ";
  }
  return result;
}

std::string ShellWindow(LONG index) {
  ComPtr<IShellWindows> windows;
  CoCreateInstance(CLSID_ShellWindows, nullptr, CLSCTX_ALL, __uuidof(IShellWindows),
                   reinterpret_cast<void**>(windows.GetAddressOf()));
  ComPtr<IDispatch> item;
  const HRESULT result = Page::Demand(windows)->Item(Variant::Int(index).get(), &item);
  return Answer(result, com::Query<IWebBrowser2>(item) != nullptr ? item.Get() : nullptr);
}

const Fact kFacts[] = {
    {"browser-state", kAll, State, "4 idle"},
    {"browser-window", kAll, BrowserWindow, "S_OK IEFrame"},
    {"tab-window", kAll, TabWindow, "S_OK TabWindowClass of the page"},
    {"window-chain", kAll, Ancestors,
     "Internet Explorer_Server Shell DocObject View TabWindowClass Frame Tab IEFrame "},
    {"shell-item", k11, [](const Page&) { return ShellWindow(0); }, "object"},
    {"shell-item", k11, [](const Page&) { return ShellWindow(1000); }, "S_FALSE NULL"},
    {"no-history", k11, [](const Page& page) { return Answer(page.browser->GoForward()); }, "E_FAIL"},
};

}  // namespace

std::span<const Fact> BrowserFacts() { return kFacts; }

}  // namespace quillmate::test
