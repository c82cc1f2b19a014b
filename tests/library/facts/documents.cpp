// Documents and how they find elements.
#include "facts/fact.h"

namespace quillmate::test {
namespace {

std::string ById(const Page& page, const wchar_t* id) {
  ComPtr<IHTMLElement> element;
  const HRESULT result = page.As<IHTMLDocument3>()->getElementById(Bstr(id).get(), &element);
  return Answer(result, element.Get());
}

std::string ByName(const Page& page, const wchar_t* name) {
  ComPtr<IHTMLElementCollection> found;
  const HRESULT result = page.As<IHTMLDocument3>()->getElementsByName(Bstr(name).get(), &found);
  return Answer(result, found.Get());
}

std::string ByTag(const Page& page, const wchar_t* tag) {
  ComPtr<IHTMLElementCollection> found;
  const HRESULT result = page.As<IHTMLDocument3>()->getElementsByTagName(Bstr(tag).get(), &found);
  return Answer(result, found.Get());
}

std::string ByClass(const Page& page, const wchar_t* name) {
  ComPtr<IHTMLElementCollection> found;
  const HRESULT result = page.As<IHTMLDocument7>()->getElementsByClassName(Bstr(name).get(), &found);
  return Answer(result, found.Get());
}

std::string Mode(const Page& page) {
  Variant mode;
  const HRESULT result = page.As<IHTMLDocument6>()->get_documentMode(mode.put());
  return Answer(result, mode);
}

std::string CompatMode(const Page& page) {
  Bstr mode;
  const HRESULT result = page.As<IHTMLDocument5>()->get_compatMode(mode.put());
  return Answer(result, mode);
}

template <HRESULT (STDMETHODCALLTYPE IHTMLDocument2::*kGet)(BSTR*)>
std::string Text(const Page& page) {
  Bstr text;
  const HRESULT result = (page.document.Get()->*kGet)(text.put());
  return Answer(result, text);
}

/// Whether a collection holds a comment, which has the tag name "!".
std::string HoldsComment(IHTMLElementCollection* collection) {
  return Answer(S_OK, collection).find("<!>") != std::string::npos ? "comment" : "none";
}

const Fact kFacts[] = {
    {"dom.c:13043-46", k5, Mode, "VT_R4 5"},
    {"dom.c:13043-46", k7, Mode, "VT_R4 7"},
    {"dom.c:13043-46", k8, Mode, "VT_R4 8"},
    {"dom.c:13043-46", k9, Mode, "VT_R4 9"},
    {"dom.c:13043-46", k10, Mode, "VT_R4 10"},
    {"dom.c:13043-46", k11, Mode, "VT_R4 11"},
    {"dom.c:13097-99", k5, CompatMode, "'BackCompat'"},
    {"dom.c:13097-99", kAll & ~k5, CompatMode, "'CSS1Compat'"},
    {"dom.c:13864-72", kAll,
     [](const Page& page) { return Answer(S_OK, com::Query<IHTMLDocument7>(page.document).Get()); },
     "document"},
    {"htmldoc.c:8163-8215", kAll,
     [](const Page& page) { return Answer(S_OK, com::Query<IHTMLDOMNode>(page.document).Get()); }, "NULL"},
    {"dom.c:8641", kAll, Text<&IHTMLDocument2::get_title>, "''"},
    {"dom.c:8644-47", kAll, Text<&IHTMLDocument2::get_cookie>, "NULL"},
    {"htmldoc.c:5659-83", kAll, Text<&IHTMLDocument2::get_readyState>, "'complete'"},
    {"dom.c:10268-73", kAll,
     [](const Page& page) {
       ComPtr<IHTMLWindow2> window;
       ComPtr<IHTMLDocument2> node;
       page.document->get_parentWindow(&window);
       window->get_document(&node);
       return Answer(com::IsSameObject(node.Get(), page.document.Get()) ? S_OK : S_FALSE);
     },
     "S_FALSE"},
    {"dom.c:10175", kAll, [](const Page& page) { return ById(page, L"none"); }, "NULL"},
    {"documentmode.js:1524-28", kTo7, [](const Page& page) { return ById(page, L"named"); }, "<SPAN>"},
    {"aa752543", kTo7, [](const Page& page) { return ById(page, L"KIDS"); }, "<DIV#kids>"},
    {"documentmode.js:1524-28", kFrom8, [](const Page& page) { return ById(page, L"KIDS"); }, "NULL"},
    {"documentmode.js:1524-28", kFrom8, [](const Page& page) { return ById(page, L"named"); }, "NULL"},
    {"dom.c:12190-12209", kAll,
     [](const Page& page) {
       ComPtr<IHTMLElement2> element;
       const HRESULT result = page.As<IHTMLDocument6>()->getElementById(Bstr(L"named").get(), &element);
       return Answer(result, element.Get());
     },
     "NULL"},
    {"dom.c:11220-37", kAll, [](const Page& page) { return ByName(page, L"none"); }, "[]"},
    {"dom.c:11220-37", kTo8 | k9, [](const Page& page) { return ByName(page, L"KIDS"); }, "[<DIV#kids>]"},
    {"Sizzle getById", k10 | k11, [](const Page& page) { return ByName(page, L"kids"); }, "[]"},
    {"dom.c:11220-37", kAll, [](const Page& page) { return ByName(page, L"NAMED"); }, "[<SPAN>]"},
    {"dom.c:10747", kAll, [](const Page& page) { return ByTag(page, L"sPaN"); }, "[<SPAN>]"},
    {"dom.c:10022-58", kAll, [](const Page& page) { return ByClass(page, L"none"); }, "[]"},
    {"dom.c:10022-58", kAll, [](const Page& page) { return ByClass(page, L"two"); }, "[<P#first><B#second>]"},
    {"ff986081", kTo8,
     [](const Page& page) {
       ComPtr<IHTMLElementCollection> found;
       page.As<IHTMLDocument3>()->getElementsByTagName(Bstr(L"*").get(), &found);
       return HoldsComment(found.Get());
     },
     "comment"},
    {"ff986081", kFrom9,
     [](const Page& page) {
       ComPtr<IHTMLElementCollection> found;
       page.As<IHTMLDocument3>()->getElementsByTagName(Bstr(L"*").get(), &found);
       return HoldsComment(found.Get());
     },
     "none"},
    {"dom.c:10074-10117", k5,
     [](const Page& page) {
       ComPtr<IHTMLElementCollection> all;
       page.document->get_all(&all);
       return HoldsComment(all.Get());
     },
     "comment"},
    {"DocumentHost.cpp GetPageSource", kAll,
     [](const Page& page) {
       ComPtr<IHTMLElement> root;
       Bstr source;
       page.As<IHTMLDocument3>()->get_documentElement(&root);
       root->get_outerHTML(source.put());
       return std::string(source.view().find(L"DOCTYPE") == std::wstring_view::npos ? "no doctype"
                                                                                    : "doctype");
     },
     "no doctype"},
};

}  // namespace

std::span<const Fact> DocumentFacts() { return kFacts; }

}  // namespace quillmate::test
