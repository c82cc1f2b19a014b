// Frames, windows and scripts.
#include <dispex.h>
#include <servprov.h>

#include "com/encoding.h"
#include "facts/fact.h"

namespace quillmate::test {
namespace {

// The page's frames in their order.
constexpr LONG kInner = 0;
constexpr LONG kForeign = 1;
constexpr LONG kBlank = 2;

ComPtr<IHTMLWindow2> Window(const Page& page) {
  ComPtr<IHTMLWindow2> window;
  page.document->get_parentWindow(&window);
  return Page::Demand(window);
}

HRESULT GetFrame(const Page& page, LONG position, Variant& frame) {
  ComPtr<IHTMLFramesCollection2> frames;
  page.document->get_frames(&frames);
  const Variant index = Variant::Int(position);
  VARIANT key = index.get();
  return Page::Demand(frames)->item(&key, frame.put());
}

std::string FrameItem(const Page& page, LONG position) {
  Variant frame;
  const HRESULT result = GetFrame(page, position, frame);
  return Answer(result, frame);
}

ComPtr<IHTMLWindow2> Frame(const Page& page, LONG position) {
  Variant frame;
  GetFrame(page, position, frame);
  return Page::Demand(frame.As<IHTMLWindow2>());
}

std::string FrameDocument(const Page& page, LONG position) {
  ComPtr<IHTMLDocument2> document;
  const HRESULT result = Frame(page, position)->get_document(&document);
  return Answer(result, document.Get());
}

/// The way around the refusal: the frame's own browser gives the document.
std::string DocumentOfFramesBrowser(const Page& page) {
  const auto services = Page::Demand(com::Query<IServiceProvider>(Frame(page, kForeign)));
  ComPtr<IWebBrowser2> browser;
  services->QueryService(IID_IWebBrowserApp, __uuidof(IWebBrowser2),
                         reinterpret_cast<void**>(browser.GetAddressOf()));
  ComPtr<IDispatch> document;
  const HRESULT result = Page::Demand(browser)->get_Document(&document);
  return Answer(result, document.Get());
}

ComPtr<IHTMLDocument2> BlankDocument(const Page& page) {
  ComPtr<IHTMLDocument2> document;
  Frame(page, kBlank)->get_document(&document);
  return Page::Demand(document);
}

std::string ModeOfBlank(const Page& page) {
  return ModeAndCompatMode({BlankDocument(page), page.browser, page.server});
}

/// The root of a document that is open and not yet written to.
std::string RootOfOpened(const Page& page) {
  ComPtr<IHTMLElement> root;
  Run(page, L"document.getElementById('blank').contentWindow.document.open()");
  const HRESULT result =
      Page::Demand(com::Query<IHTMLDocument3>(BlankDocument(page)))->get_documentElement(&root);
  Run(page, L"d = document.getElementById('blank').contentWindow.document; d.write('<p>'); d.close()");
  return Answer(result, root.Get());
}

/// A frame's document that its frame has left.
std::string StaleDocument(const Page& page) {
  Run(page, L"f = document.createElement('iframe'); document.body.appendChild(f)");
  ComPtr<IHTMLDocument2> document;
  ComPtr<IHTMLElement> body;
  Frame(page, kBlank + 1)->get_document(&document);
  Run(page, L"f.parentNode.removeChild(f)");
  const HRESULT result = Page::Demand(document)->get_body(&body);
  return Answer(result, body.Get());
}

std::string Relative(const Page& page, HRESULT (STDMETHODCALLTYPE IHTMLWindow2::*get)(IHTMLWindow2**)) {
  ComPtr<IHTMLWindow2> self;
  ComPtr<IHTMLWindow2> other;
  Window(page)->get_self(&self);
  const HRESULT result = (Window(page).Get()->*get)(&other);
  return Answer(result) + (com::IsSameObject(self.Get(), other.Get()) ? " itself" : " another");
}

/// The window behind a document is another object than the one that windows hand out.
std::string ParentWindow(const Page& page) {
  ComPtr<IHTMLWindow2> self;
  const HRESULT result = Window(page)->get_self(&self);
  return Answer(result) + (com::IsSameObject(self.Get(), Window(page).Get()) ? " self" : " another");
}

std::string FramesObject(const Page& page) {
  ComPtr<IHTMLFramesCollection2> frames;
  page.document->get_frames(&frames);
  return Answer(S_OK, com::Query<IHTMLWindow2>(frames).Get());
}

std::string ContentWindow(const Page& page) {
  ComPtr<IHTMLWindow2> window;
  const HRESULT result = page.Element<IHTMLFrameBase2>(L"frame")->get_contentWindow(&window);
  return Answer(result, window.Get());
}

std::string ContentOfFrameElement(const Page& page) {
  ComPtr<IDispatch> content;
  page.Element(L"frame")->get_document(&content);
  return Text(Page::Demand(com::Query<IHTMLDocument2>(content)), &IHTMLDocument2::get_title);
}

std::string FrameName(const Page& page, const wchar_t* id) {
  return Text(page.Element<IHTMLFrameBase>(id), &IHTMLFrameBase::get_name);
}

std::string FrameSource(const Page& page) {
  Variant source;
  const HRESULT result = page.Element(L"frame")->getAttribute(Bstr(L"src").get(), 2, source.put());
  return Answer(result, source);
}

/// Where the document's area begins on the screen.
std::string ScreenOrigin(const Page& page) {
  const auto window = Page::Demand(com::Query<IHTMLWindow3>(Window(page)));
  POINT told{};
  POINT actual{};
  ClientToScreen(page.server, &actual);
  const HRESULT result = window->get_screenLeft(&told.x);
  window->get_screenTop(&told.y);
  return Answer(result) + (told.x == actual.x && told.y == actual.y ? " at the page's window" : " elsewhere");
}

std::string ScrollTo(const Page& page) {
  Window(page)->scrollTo(0, 30);
  const HRESULT result = Window(page)->scrollBy(0, 12);
  Run(page, L"document.getElementById('kids').title = pageYOffset; scrollTo(0, 0)");
  const std::string top = Text(page.Element(L"kids"), &IHTMLElement::get_title);
  Run(page, L"document.getElementById('kids').title = ''");
  return Answer(result) + " " + top;
}

std::string Execute(const Page& page, const wchar_t* code) {
  Variant value;
  const HRESULT result = Window(page)->execScript(Bstr(code).get(), Bstr(L"JScript").get(), value.put());
  return Answer(result, value);
}

std::string NumberOfName(const Page& page, const wchar_t* name) {
  DISPID id = DISPID_UNKNOWN;
  const auto window = Page::Demand(com::Query<IDispatchEx>(Window(page)));
  return Answer(window->GetDispID(Bstr(name).get(), fdexNameCaseSensitive, &id));
}

/// Runs a script by the window's "eval", which has to be put there first in newer modes.
/// @param error takes the text of a script's error.
std::string Evaluate(const Page& page, const wchar_t* code, std::string* error = nullptr) {
  Run(page, L"window.eval = eval");
  const auto window = Page::Demand(com::Query<IDispatchEx>(Window(page)));
  DISPID id = DISPID_UNKNOWN;
  window->GetDispID(Bstr(L"eval").get(), fdexNameCaseSensitive, &id);
  const Variant text = Variant::Text(code);
  VARIANT argument = text.get();
  DISPPARAMS arguments = {&argument, nullptr, 1, 0};
  Variant value;
  EXCEPINFO exception = {};
  const HRESULT result =
      window->Invoke(id, IID_NULL, 1024, DISPATCH_METHOD, &arguments, value.put(), &exception, nullptr);
  Bstr description;
  *description.put() = exception.bstrDescription;
  SysFreeString(exception.bstrSource);
  SysFreeString(exception.bstrHelpFile);
  if (error != nullptr) *error = com::ToUtf8(description.view());
  return Answer(result, value);
}

std::string ScriptError(const Page& page) {
  std::string error;
  const std::string answer = Evaluate(page, L"throw new Error('The basket is empty.')", &error);
  return answer + ": " + error;
}

const Fact kFacts[] = {
    {"frames", kAll, FramesObject, "window"},
    {"frame-item", kAll, [](const Page& page) { return FrameItem(page, kInner); }, "VT_DISPATCH window"},
    {"frame-item-beyond", kAll, [](const Page& page) { return FrameItem(page, 9); }, "DISP_E_MEMBERNOTFOUND"},
    {"frame-document", kAll, [](const Page& page) { return FrameDocument(page, kInner); }, "document"},
    {"frame-foreign", kAll, [](const Page& page) { return FrameDocument(page, kForeign); }, "E_ACCESSDENIED"},
    {"frame-browser", kAll, DocumentOfFramesBrowser, "document"},
    {"frame-blank-mode", kTo8, ModeOfBlank, "VT_R4 5 'BackCompat'"},
    {"frame-blank-mode", k9, ModeOfBlank, "VT_R4 9 'BackCompat'"},
    {"frame-blank-mode", k11, ModeOfBlank, "VT_R4 11 'BackCompat'"},
    {"root-of-opened", kAll, RootOfOpened, "NULL"},
    {"frame-stale", kAll, StaleDocument, "E_ACCESSDENIED"},
    {"frame-content-window", kAll, ContentWindow, "window"},
    {"frame-element-document", kAll, ContentOfFrameElement, "'inside'"},
    {"frame-name", kAll, [](const Page& page) { return FrameName(page, L"frame"); }, "'inner'"},
    {"frame-name", kAll, [](const Page& page) { return FrameName(page, L"blank"); }, "NULL"},
    {"frame-source", kAll, FrameSource, "VT_BSTR '/inner'"},
    {"window-parent", kAll, [](const Page& page) { return Relative(page, &IHTMLWindow2::get_parent); },
     "S_OK itself"},
    {"window-top", kAll, [](const Page& page) { return Relative(page, &IHTMLWindow2::get_top); },
     "S_OK itself"},
    {"parent-window", kAll, ParentWindow, "S_OK another"},
    {"screen-origin", kAll, ScreenOrigin, "S_OK at the page's window"},
    {"scroll-to", kAll, ScrollTo, "S_OK '42'"},
    // Scripts.
    {"exec-script", kAll, [](const Page& page) { return Execute(page, L"1 + 1"); }, "VT_EMPTY"},
    {"exec-script-error", kAll, [](const Page& page) { return Execute(page, L"throw 1"); },
     "SCRIPT_E_REPORTED"},
    {"name-unknown", kAll, [](const Page& page) { return NumberOfName(page, L"no_such_name"); },
     "DISP_E_UNKNOWNNAME"},
    {"script-values", kAll, [](const Page& page) { return Evaluate(page, L"undefined"); }, "VT_EMPTY"},
    {"script-values", kAll, [](const Page& page) { return Evaluate(page, L"null"); }, "VT_NULL"},
    {"script-values", kAll, [](const Page& page) { return Evaluate(page, L"6 * 7"); }, "VT_I4 42"},
    {"script-values", kAll, [](const Page& page) { return Evaluate(page, L"1 / 2"); }, "VT_R8 0.500000"},
    {"script-values", kAll, [](const Page& page) { return Evaluate(page, L"1 == 1"); }, "VT_BOOL true"},
    {"script-values", kAll, [](const Page& page) { return Evaluate(page, L"'a' + 'b'"); }, "VT_BSTR 'ab'"},
    {"script-values", kAll, [](const Page& page) { return Evaluate(page, L"document.body"); },
     "VT_DISPATCH <BODY>"},
    {"script-values", kAll, [](const Page& page) { return Evaluate(page, L"[1, 2]"); }, "VT_DISPATCH object"},
    {"script-error", kAll, ScriptError, "DISP_E_EXCEPTION: The basket is empty."},
};

}  // namespace

std::span<const Fact> FrameAndWindowFacts() { return kFacts; }

}  // namespace quillmate::test
