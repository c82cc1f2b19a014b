// Frames, windows and scripts.
#include <dispex.h>
#include <servprov.h>

#include "facts/fact.h"

namespace quillmate::test {
namespace {

ComPtr<IHTMLWindow2> Window(const Page& page) {
  ComPtr<IHTMLWindow2> window;
  page.document->get_parentWindow(&window);
  return Page::Demand(window);
}

std::string FrameItem(const Page& page, Variant index) {
  ComPtr<IHTMLFramesCollection2> frames;
  page.document->get_frames(&frames);
  VARIANT key = index.get();
  Variant item;
  const HRESULT result = Page::Demand(frames)->item(&key, item.put());
  return Answer(result, item);
}

ComPtr<IHTMLWindow2> Frame(const Page& page, LONG index) {
  ComPtr<IHTMLFramesCollection2> frames;
  page.document->get_frames(&frames);
  VARIANT key = Variant::Int(index).get();
  Variant item;
  Page::Demand(frames)->item(&key, item.put());
  return Page::Demand(item.As<IHTMLWindow2>());
}

std::string FrameDocument(const Page& page, LONG index) {
  ComPtr<IHTMLDocument2> document;
  const HRESULT result = Frame(page, index)->get_document(&document);
  return Answer(result, document.Get());
}

/// The way around the refusal: the frame's own browser gives the document.
std::string DocumentOfFramesBrowser(const Page& page) {
  const auto services = Page::Demand(com::Query<IServiceProvider>(Frame(page, 1)));
  ComPtr<IWebBrowser2> browser;
  services->QueryService(IID_IWebBrowserApp, __uuidof(IWebBrowser2),
                         reinterpret_cast<void**>(browser.GetAddressOf()));
  ComPtr<IDispatch> document;
  const HRESULT result = Page::Demand(browser)->get_Document(&document);
  return Answer(result, document.Get());
}

std::string Parent(const Page& page, HRESULT (STDMETHODCALLTYPE IHTMLWindow2::*get)(IHTMLWindow2**)) {
  ComPtr<IHTMLWindow2> self;
  ComPtr<IHTMLWindow2> other;
  Window(page)->get_self(&self);
  const HRESULT result = (Window(page).Get()->*get)(&other);
  return Answer(result) + (com::IsSameObject(self.Get(), other.Get()) ? " itself" : " another");
}

std::string Execute(const Page& page, const wchar_t* code, const wchar_t* language) {
  Variant value;
  const HRESULT result = Window(page)->execScript(Bstr(code).get(), Bstr(language).get(), value.put());
  return Answer(result, value);
}

std::string DispatchId(const Page& page, const wchar_t* name) {
  DISPID id = DISPID_UNKNOWN;
  const auto window = Page::Demand(com::Query<IDispatchEx>(Window(page)));
  return Answer(window->GetDispID(Bstr(name).get(), fdexNameCaseSensitive, &id));
}

/// Runs a script by the window's "eval", which has to be put there first in newer modes.
std::string Evaluate(const Page& page, const wchar_t* code) {
  Execute(page, L"window.eval = eval", L"JScript");
  const auto window = Page::Demand(com::Query<IDispatchEx>(Window(page)));
  DISPID id = DISPID_UNKNOWN;
  window->GetDispID(Bstr(L"eval").get(), fdexNameCaseSensitive, &id);
  const Variant text = Variant::Text(code);
  VARIANT argument = text.get();
  DISPPARAMS arguments = {&argument, nullptr, 1, 0};
  Variant value;
  const HRESULT result =
      window->Invoke(id, IID_NULL, 1024, DISPATCH_METHOD, &arguments, value.put(), nullptr, nullptr);
  return Answer(result, value);
}

const Fact kFacts[] = {
    {"dom.c:12090-12117", kAll, [](const Page& page) { return FrameItem(page, Variant::Int(0)); },
     "VT_DISPATCH window"},
    {"dom.c:12118-22", kAll, [](const Page& page) { return FrameItem(page, Variant::Int(9)); },
     "DISP_E_MEMBERNOTFOUND"},
    {"dom.c:12124-34", kAll, [](const Page& page) { return FrameItem(page, Variant::Text(L"inner")); },
     "VT_DISPATCH window"},
    {"dom.c:12136-42", kAll, [](const Page& page) { return FrameItem(page, Variant::Bool(true)); },
     "E_INVALIDARG"},
    {"aa752398", kAll,
     [](const Page& page) {
       ComPtr<IHTMLFramesCollection2> frames;
       LONG length = 0;
       page.document->get_frames(&frames);
       const HRESULT result = Page::Demand(frames)->get_length(&length);
       return Answer(result, length);
     },
     "2"},
    {"dom.c:12161-68", kAll,
     [](const Page& page) {
       ComPtr<IHTMLFramesCollection2> frames;
       page.document->get_frames(&frames);
       return Answer(S_OK, com::Query<IHTMLWindow2>(frames).Get());
     },
     "window"},
    {"Browser.cpp GetDocumentFromWindow", kAll, [](const Page& page) { return FrameDocument(page, 0); },
     "document"},
    {"Browser.cpp GetDocumentFromWindow", kAll, [](const Page& page) { return FrameDocument(page, 1); },
     "E_ACCESSDENIED"},
    {"Element.cpp", kAll, DocumentOfFramesBrowser, "document"},
    {"dom.c:8186-91", kAll, [](const Page& page) { return Parent(page, &IHTMLWindow2::get_parent); },
     "S_OK itself"},
    {"dom.c:8186-91", kAll, [](const Page& page) { return Parent(page, &IHTMLWindow2::get_top); },
     "S_OK itself"},
    {"dom.c:8194", kAll,
     [](const Page& page) {
       Bstr name;
       const HRESULT result = Window(page)->get_name(name.put());
       return Answer(result, name);
     },
     "NULL"},
    {"dom.c:9478-86", kAll,
     [](const Page& page) {
       ComPtr<IDispatch> content;
       Bstr title;
       page.Element(L"frame")->get_document(&content);
       Page::Demand(com::Query<IHTMLDocument2>(content))->get_title(title.put());
       return Answer(S_OK, title);
     },
     "'inside'"},
    {"hh869591", kAll, [](const Page& page) { return Execute(page, L"1 + 1", L"JScript"); }, "VT_EMPTY"},
    {"script.c:4912-16", kAll, [](const Page& page) { return Execute(page, L"1", L"Klingon"); },
     "CO_E_CLASSSTRING"},
    {"Script.cpp", kAll, [](const Page& page) { return Execute(page, L"throw 1", L"JScript"); },
     "SCRIPT_E_REPORTED"},
    {"script.c:3494-3508", kAll, [](const Page& page) { return DispatchId(page, L"no_such_name"); },
     "DISP_E_UNKNOWNNAME"},
    {"VariantUtilities.cpp", kAll, [](const Page& page) { return Evaluate(page, L"undefined"); }, "VT_EMPTY"},
    {"VariantUtilities.cpp", kAll, [](const Page& page) { return Evaluate(page, L"null"); }, "VT_NULL"},
    {"VariantUtilities.cpp", kAll, [](const Page& page) { return Evaluate(page, L"6 * 7"); }, "VT_I4 42"},
    {"VariantUtilities.cpp", kAll, [](const Page& page) { return Evaluate(page, L"1 / 2"); },
     "VT_R8 0.500000"},
    {"VariantUtilities.cpp", kAll, [](const Page& page) { return Evaluate(page, L"1 == 1"); },
     "VT_BOOL true"},
    {"VariantUtilities.cpp", kAll, [](const Page& page) { return Evaluate(page, L"'a' + 'b'"); },
     "VT_BSTR 'ab'"},
    {"VariantUtilities.cpp", kAll, [](const Page& page) { return Evaluate(page, L"document.body"); },
     "VT_DISPATCH <BODY>"},
    {"Script.cpp", kAll, [](const Page& page) { return Evaluate(page, L"no_such_function()"); },
     "DISP_E_EXCEPTION"},
};

}  // namespace

std::span<const Fact> FrameAndWindowFacts() { return kFacts; }

}  // namespace quillmate::test
