// The browser object, the shell's list of browsers, the windows around a page.
#include <oleacc.h>

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

std::string ObjectFromNothing(const Page&) {
  ComPtr<IHTMLDocument2> document;
  return Answer(
      ObjectFromLresult(0, __uuidof(IHTMLDocument2), 0, reinterpret_cast<void**>(document.GetAddressOf())));
}

const Fact kFacts[] = {
    {"webbrowser.c:854", kAll, State, "4 idle"},
    {"aa752126", kAll,
     [](const Page& page) {
       SHANDLE_PTR window = 0;
       page.browser->get_HWND(&window);
       return ClassOf(reinterpret_cast<HWND>(window));
     },
     "IEFrame"},
    {"FindBrowserWindow", kAll, Ancestors,
     "Internet Explorer_Server Shell DocObject View TabWindowClass Frame Tab IEFrame "},
    {"main.c:703-711", k11, ObjectFromNothing, "E_FAIL"},
    {"exdisp Item", k11, [](const Page&) { return ShellWindow(0); }, "object"},
    {"exdisp Item", k11, [](const Page&) { return ShellWindow(1000); }, "S_FALSE NULL"},
    {"ieframe/navigate.c:1149-67", k11, [](const Page& page) { return Answer(page.browser->GoForward()); },
     "E_FAIL"},
};

}  // namespace

std::span<const Fact> BrowserFacts() { return kFacts; }

}  // namespace quillmate::test
