// Getting at a browser's page as any client does, and sending it elsewhere.
#include <servprov.h>
#include <gtest/gtest.h>

#include "com/encoding.h"
#include "facts/fact.h"

namespace quillmate::test {
namespace {

bool IsLoaded(const Page& page, const std::wstring& address) {
  Bstr url;
  Bstr state;
  page.document->get_URL(url.put());
  page.document->get_readyState(state.put());
  return url.view() == address && state.view() == L"complete";
}

}  // namespace

LRESULT AskForObject(HWND server) {
  const UINT message = RegisterWindowMessageW(L"WM_HTML_GETOBJECT");
  DWORD_PTR answer = 0;
  // The window is there before its document.
  for (int round = 0; round < 1200 && answer == 0; ++round) {
    SendMessageTimeoutW(server, message, 0, 0, SMTO_ABORTIFHUNG, 5000, &answer);
    if (answer == 0) Sleep(50);
  }
  return static_cast<LRESULT>(answer);
}

Page Reach(HWND server) {
  Page page;
  page.server = server;
  page.document = ObjectOf<IHTMLDocument2>(server);
  // An object stands behind each answer once, so the browser is asked for by another.
  ObjectOf<IServiceProvider>(server)->QueryService(IID_IWebBrowserApp, __uuidof(IWebBrowser2),
                                                   reinterpret_cast<void**>(page.browser.GetAddressOf()));
  Page::Demand(page.browser);
  return page;
}

void Open(const Page& page, const std::string& address) {
  const Variant text = Variant::Text(com::FromUtf8(address));
  VARIANT url = text.get();
  VARIANT none = {};
  ASSERT_EQ(Answer(page.browser->Navigate2(&url, &none, &none, &none, &none)), "S_OK");
}

void Navigate(const Page& page, const std::string& address) {
  const std::wstring wide = com::FromUtf8(address);
  Open(page, address);
  for (int round = 0; round < 600 && !IsLoaded(page, wide); ++round) Sleep(50);
  ASSERT_TRUE(IsLoaded(page, wide)) << address;
}

}  // namespace quillmate::test
