// Asks the test browser every fact, in every document mode that the fact names.
#include <gtest/gtest.h>

#include <oleacc.h>
#include <servprov.h>

#include "com/apartment.h"
#include "com/encoding.h"
#include "facts/fact.h"
#include "support/browser.h"
#include "support/page_server.h"

namespace {

using namespace quillmate::test;
using quillmate::com::Query;

/// What the questions are about.
const char kBody[] = R"(<body style="margin: 0">
<div id=kids><p id=first class="one two">text</p><!-- comment --><b id=second class="two">bold</b></div>
<div id=pair><i name=twice></i><u name=twice></u></div>
<p id=last></p><span name=named></span><test id=invented></test><svg><circle id=circle /></svg>
<a id=link href="next.htm?a=b">link</a><div id=hidden style="display: none"></div>
<div id=placed style="position: absolute; left: 200px; top: 100px; width: 40px; height: 30px; overflow: hidden"></div>
<input id=field><input id=typed value=first><button id=button onclick="this.title = 'clicked'">b</button>
<select id=list onchange="this.title += 'changed '"><option>opt1</option><option>opt2</option></select>
<table id=table><tbody><tr id=b1><td id=c1>1</td><th id=c2>2</th></tr></tbody><thead><tr id=h><th>head</th></tr></thead>
<tbody><tr id=b2><td>3</td></tr></tbody></table>
<table id=outer><tr id=o1><td><table><tr id=nested><td>n</td></tr></table></td></tr></table>
<textarea id=area></textarea><input id=written value=first><input type=checkbox id=box onchange="this.title = 'changed'" onclick="this.title = 'clicked'">
<div style="height: 3000px"></div><h6 id=far>far</h6><div style="height: 3000px"></div>
<script>document.getElementById('typed').value = 'now';</script>
)";

struct ModeName {
  Modes mode;
  const char* head;
};
const ModeName kModes[] = {
    {k5, "<html><head>"},
    {k7, "<!DOCTYPE html><html><head><meta http-equiv='X-UA-Compatible' content='IE=7'>"},
    {k8, "<!DOCTYPE html><html><head><meta http-equiv='X-UA-Compatible' content='IE=8'>"},
    {k9, "<!DOCTYPE html><html><head><meta http-equiv='X-UA-Compatible' content='IE=9'>"},
    {k10, "<!DOCTYPE html><html><head><meta http-equiv='X-UA-Compatible' content='IE=10'>"},
    {k11, "<!DOCTYPE html><html><head>"},
};

ComPtr<ITypeLib> LoadPageTypeLibrary() {
  // {3050F1C5-98B5-11CF-BB82-00AA00BDCE0B}
  constexpr GUID kMshtml = {0x3050F1C5, 0x98B5, 0x11CF, {0xBB, 0x82, 0x00, 0xAA, 0x00, 0xBD, 0xCE, 0x0B}};
  ComPtr<ITypeLib> library;
  LoadRegTypeLib(kMshtml, 4, 0, LOCALE_NEUTRAL, library.GetAddressOf());
  return library;
}

template <class T>
ComPtr<T> ObjectOf(HWND server) {
  const UINT message = RegisterWindowMessageW(L"WM_HTML_GETOBJECT");
  DWORD_PTR answer = 0;
  // The window is there before its document.
  for (int round = 0; round < 1200 && answer == 0; ++round) {
    SendMessageTimeoutW(server, message, 0, 0, SMTO_ABORTIFHUNG, 5000, &answer);
    if (answer == 0) Sleep(50);
  }
  ComPtr<T> object;
  ObjectFromLresult(static_cast<LRESULT>(answer), __uuidof(T), 0,
                    reinterpret_cast<void**>(object.GetAddressOf()));
  return Page::Demand(object);
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

bool IsLoaded(const Page& page, const std::wstring& address) {
  Bstr url;
  Bstr state;
  page.document->get_URL(url.put());
  page.document->get_readyState(state.put());
  return url.view() == address && state.view() == L"complete";
}

void Navigate(const Page& page, const std::string& address) {
  const std::wstring wide = quillmate::com::FromUtf8(address);
  VARIANT url = {};
  const Bstr text(wide);
  url.vt = VT_BSTR;
  url.bstrVal = text.get();
  VARIANT none = {};
  ASSERT_EQ(Answer(page.browser->Navigate2(&url, &none, &none, &none, &none)), "S_OK");
  for (int round = 0; round < 600 && !IsLoaded(page, wide); ++round) Sleep(50);
  ASSERT_TRUE(IsLoaded(page, wide)) << address;
}

std::string Ask(const Fact& fact, const Page& page) {
  try {
    return fact.ask(page);
  } catch (const std::exception& error) {
    return error.what();
  }
}

TEST(Facts, HoldInTheirModes) {
  const quillmate::com::Apartment apartment;
  // Kept loaded, or some systems read it again for each object.
  const auto type_library = LoadPageTypeLibrary();
  PageServer server;
  PageServer other_origin;
  const std::string inner = server.Page("/inner", "<!DOCTYPE html><title>inside</title>");
  const std::string foreign = other_origin.Page("/foreign", "<!DOCTYPE html><title>foreign</title>");
  const std::string frames =
      "<iframe id=frame name=inner src='" + inner + "'></iframe><iframe src='" + foreign + "'></iframe>";
  const Browser browser("about:blank");
  const Page page = Reach(browser.Page());
  for (const auto& [mode, head] : kModes) {
    Navigate(page, server.Page("/mode" + std::to_string(mode), head + ("</head>" + (kBody + frames))));
    if (HasFatalFailure()) return;
    for (const auto facts : {DocumentFacts(), CollectionFacts(), ElementFacts(), ControlFacts(),
                             FrameAndWindowFacts(), BrowserFacts()}) {
      for (const Fact& fact : facts) {
        if ((fact.modes & mode) == 0) continue;
        EXPECT_EQ(Ask(fact, page), fact.answer)
            << fact.source << ", row " << &fact - facts.data() << " of its table: " << head;
      }
    }
  }
}

}  // namespace
