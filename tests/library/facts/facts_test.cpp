// Asks the test browser every fact, in every document mode that the fact names.
#include <gtest/gtest.h>

#include <memory>

#include "com/encoding.h"
#include "com/owned.h"
#include "facts/fact.h"
#include "support/browser.h"
#include "support/page_server.h"
#include "support/under_test.h"

namespace {

using namespace quillmate::test;

/// What the questions are about.
const char kBody[] = R"(<body style="margin: 0">
<div id=kids><p id=first class="one two">text</p><!-- comment --><b id=second class="two">bold</b></div>
<div id=pair><i name=twice></i><u name=twice></u></div><div id=nest><div id=nested><i></i></div></div>
<p id=last></p><span name=named></span><test id=invented name=ghost></test><svg><circle id=circle /></svg>
<a name=clash></a><i id=clash></i><div id=quiet><noscript><big>no scripts</big></noscript></div><ul><li id=item value=3>three</li></ul>
<a id=link href="next.htm?a=b">link</a><label id=label for=field>label</label><div id=written-over>a<b>b</b></div>
<style>#styled { padding-left: 1em; padding-top: 12pt } div { padding-left: 0 } .none { padding-left: 7px }</style>
<div id=hidden style="display: none"></div><div id=styled></div>
<div id=placed style="position: absolute; left: 200px; top: 100px; width: 40px; height: 30px; overflow: hidden"></div>
<input id=field onchange="this.title = 'changed'"><input id=typed value=first><input id=fresh value=first>
<input type=file id=file><input type=search id=seek><button id=button value=b1 onclick="this.title = 'clicked'">b</button>
<form id=form action="/none" onsubmit="this.title += ' submit'; return false">
<input type=submit id=submit onclick="this.form.title = 'click'"></form>
<input id=busy onfocus="for (var end = +new Date() + 1500; new Date() < end;); this.title = 'focused'">
<select id=list onchange="this.title += 'changed '"><option>opt1</option><option value=two>opt2</option></select>
<select id=valued onchange="this.title += 'change'"><option value=v1>1</option><option value=v2>2</option></select>
<table id=table><tbody><tr id=b1><td id=c1>1</td><th id=c2>2</th></tr></tbody>
<thead><tr id=h><th>head</th></tr></thead><tbody><tr id=b2><td>3</td></tr></tbody></table>
<div id=bare><table><tr><td></td></tr></table></div>
<table id=outer><tr id=o1><td><table><tr id=nested-row><td>n</td></tr></table></td></tr></table>
<textarea id=area></textarea><textarea id=lines>a
b</textarea>
<div style="height: 3000px"></div><h6 id=far>far</h6><div style="height: 3000px"></div>
<script>var typed = document.getElementById('typed'); typed.value = 'now';</script>
)";

struct ModeName {
  Modes mode;
  const char* number;
  const char* head;
};
const ModeName kModes[] = {
    {k5, "5", "<html><head><title>facts</title>"},
    {k7, "7",
     "<!DOCTYPE html><html><head><title>facts</title><meta http-equiv='X-UA-Compatible' content='IE=7'>"},
    {k8, "8",
     "<!DOCTYPE html><html><head><title>facts</title><meta http-equiv='X-UA-Compatible' content='IE=8'>"},
    {k9, "9",
     "<!DOCTYPE html><html><head><title>facts</title><meta http-equiv='X-UA-Compatible' content='IE=9'>"},
    {k10, "10",
     "<!DOCTYPE html><html><head><title>facts</title><meta http-equiv='X-UA-Compatible' content='IE=10'>"},
    {k11, "11", "<!DOCTYPE html><html><head><title>facts</title>"},
};

ComPtr<ITypeLib> LoadPageTypeLibrary() {
  // {3050F1C5-98B5-11CF-BB82-00AA00BDCE0B}
  constexpr GUID kMshtml = {0x3050F1C5, 0x98B5, 0x11CF, {0xBB, 0x82, 0x00, 0xAA, 0x00, 0xBD, 0xCE, 0x0B}};
  ComPtr<ITypeLib> library;
  LoadRegTypeLib(kMshtml, 4, 0, LOCALE_NEUTRAL, library.GetAddressOf());
  return library;
}

std::string Ask(const Fact& fact, const Page& page) {
  try {
    return fact.ask(page);
  } catch (const std::exception& error) {
    return error.what();
  }
}

std::string Url(const Page& page) { return Text(page.document, &IHTMLDocument2::get_URL); }

/// A browser for all facts, and the servers of what it shows.
class Facts : public testing::Test {
 protected:
  static void SetUpTestSuite() { desk = std::make_unique<Desk>(); }
  static void TearDownTestSuite() { desk.reset(); }

  struct Desk {
    quillmate::com::Apartment apartment;
    /// Kept loaded, or some systems read it again for each object.
    ComPtr<ITypeLib> type_library = LoadPageTypeLibrary();
    PageServer server;
    PageServer other_origin;
    // A real browser's object dies when it moves to a page of another zone.
    Browser browser{server.Page("/start", "<!DOCTYPE html>")};
    Page page = Reach(browser.Page());
  };
  static inline std::unique_ptr<Desk> desk;
};

TEST_F(Facts, HoldInTheirModes) {
  const std::string inner = "<iframe id=frame name=inner src='/inner'></iframe>";
  desk->server.Page("/inner", "<!DOCTYPE html><title>inside</title>");
  const std::string foreign = desk->other_origin.Page("/foreign", "<!DOCTYPE html><title>foreign</title>");
  const std::string frames = inner + "<iframe src='" + foreign + "'></iframe><iframe id=blank></iframe>";
  for (const auto& [mode, number, head] : kModes) {
    const std::string path = "/mode" + std::to_string(mode);
    Navigate(desk->page, desk->server.Page(path, head + ("</head>" + (kBody + frames))) + "#part");
    if (HasFatalFailure()) return;
    for (const auto facts : {DocumentFacts(), CollectionFacts(), ElementFacts(), ActionFacts(),
                             ControlFacts(), FrameAndWindowFacts(), BrowserFacts()}) {
      for (const Fact& fact : facts) {
        if ((fact.modes & mode) == 0) continue;
        const std::string answer = Ask(fact, desk->page);
        EXPECT_EQ(answer, fact.answer) << fact.name << " " << head;
        Report(fact.name + std::string(" in mode ") + number, answer, fact.answer);
      }
    }
  }
}

TEST_F(Facts, ModesFollowWhatPagesWish) {
  for (const OtherPage& other : OtherPages()) {
    Navigate(desk->page, desk->server.Page("/" + std::string(other.name), other.source));
    if (HasFatalFailure()) return;
    const std::string answer = ModeAndCompatMode(desk->page);
    EXPECT_EQ(answer, other.answer) << other.name << " " << other.source;
    Report(other.name + std::string(" of ") + other.source, answer, other.answer);
    // The next page of that address must be another document.
    Navigate(desk->page, "about:blank");
  }
}

TEST_F(Facts, FramesOfAFramesetAreFrames) {
  desk->server.Page("/inner", "<!DOCTYPE html><title>inside</title>");
  Navigate(desk->page, desk->server.Page("/frameset",
                                         "<frameset cols=50%,50%><frame src=/inner name=left>"
                                         "<frame src=/inner name=right></frameset>"));
  if (HasFatalFailure()) return;
  const Variant index = Variant::Int(1);
  VARIANT key = index.get();
  ComPtr<IHTMLFramesCollection2> frames;
  Variant frame;
  desk->page.document->get_frames(&frames);
  EXPECT_EQ(Answer(frames->item(&key, frame.put()), frame), "VT_DISPATCH window");
  ComPtr<IHTMLWindow2> parent;
  ComPtr<IHTMLWindow2> top;
  frame.As<IHTMLWindow2>()->get_parent(&parent);
  frame.As<IHTMLWindow2>()->get_top(&top);
  EXPECT_TRUE(quillmate::com::IsSameObject(parent.Get(), top.Get()));
}

/// The parser waits for a script that never comes: there is a head, and no body yet.
TEST_F(Facts, ALoadingDocumentHasNoBody) {
  Navigate(desk->page, "about:blank");
  const std::string page =
      "<!DOCTYPE html><head><script src='" + desk->server.EndlessPage() + "'></script><body>";
  const std::string address = desk->server.Page("/loading", page);
  Open(desk->page, address);
  for (int round = 0; round < 600 && Url(desk->page) != "'" + address + "'"; ++round) Sleep(50);
  ComPtr<IHTMLElement> body;
  EXPECT_EQ(Answer(desk->page.document->get_body(&body), body.Get()), "NULL");
  EXPECT_EQ(Text(desk->page.document, &IHTMLDocument2::get_readyState), "'loading'");
}

TEST_F(Facts, AModalDialogHasAPageAndNoBrowser) {
  desk->server.Page("/dialog", "<!DOCTYPE html><title>Dialog</title>");
  Navigate(desk->page, desk->server.Page("/opener",
                                         "<!DOCTYPE html><title>Opener</title><script>setTimeout(function () "
                                         "{ showModalDialog('/dialog') }, 100)</script>"));
  if (HasFatalFailure()) return;
  HWND dialog = nullptr;
  for (int round = 0; round < 600 && IsWindowVisible(dialog) == 0; ++round) {
    dialog = FindWindowW(L"Internet Explorer_TridentDlgFrame", nullptr);
    Sleep(50);
  }
  ASSERT_NE(dialog, nullptr);
  EXPECT_EQ(GetWindow(dialog, GW_OWNER), GetAncestor(desk->page.server, GA_ROOT));
  const HWND page = FindWindowExW(dialog, nullptr, L"Internet Explorer_Server", nullptr);
  ASSERT_NE(page, nullptr);
  const auto document = ObjectOf<IHTMLDocument2>(page);
  for (int round = 0; round < 600; ++round) {
    if (Text(document, &IHTMLDocument2::get_title) == "'Dialog'") break;
    Sleep(50);
  }
  EXPECT_EQ(Text(document, &IHTMLDocument2::get_title), "'Dialog'");
  ComPtr<IWebBrowser2> browser;
  ObjectOf<IServiceProvider>(page)->QueryService(IID_IWebBrowserApp, __uuidof(IWebBrowser2),
                                                 reinterpret_cast<void**>(browser.GetAddressOf()));
  EXPECT_EQ(browser, nullptr);
  SendMessageW(dialog, WM_CLOSE, 0, 0);
}

TEST_F(Facts, AddressesOfFilesAndOfFailures) {
  const std::string file = FilePage("facts.html");
  Navigate(desk->page, file);
  const std::string refused = "http://127.0.0.1:1/refused";
  Open(desk->page, refused);
  for (int round = 0; round < 600 && Url(desk->page) == "'" + file + "'"; ++round) Sleep(50);
  const std::string address = Url(desk->page);
  EXPECT_TRUE(address.starts_with("'res://")) << address;
  EXPECT_TRUE(address.ends_with("#" + refused + "'")) << address;
}

}  // namespace
