// Documents: what they say of themselves, and how they find elements.
#include "facts/fact.h"

namespace quillmate::test {
namespace {

ComPtr<IHTMLElement> Root(const Page& page) {
  ComPtr<IHTMLElement> root;
  page.As<IHTMLDocument3>()->get_documentElement(&root);
  return Page::Demand(root);
}

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

std::string ByTagUnder(const Page& page, const wchar_t* id, const wchar_t* tag) {
  ComPtr<IHTMLElementCollection> found;
  const HRESULT result = page.Element<IHTMLElement2>(id)->getElementsByTagName(Bstr(tag).get(), &found);
  return Answer(result, found.Get());
}

std::string ByClass(const Page& page, const wchar_t* names) {
  ComPtr<IHTMLElementCollection> found;
  const HRESULT result = page.As<IHTMLDocument7>()->getElementsByClassName(Bstr(names).get(), &found);
  return Answer(result, found.Get());
}

std::string ByClassUnder(const Page& page, const wchar_t* id, const wchar_t* names) {
  ComPtr<IHTMLElementCollection> found;
  const HRESULT result = page.Element<IHTMLElement6>(id)->getElementsByClassName(Bstr(names).get(), &found);
  return Answer(result, found.Get());
}

/// The first elements of the document.
std::string FirstOfAll(const Page& page) {
  ComPtr<IHTMLElementCollection> all;
  page.document->get_all(&all);
  std::string names;
  for (LONG i = 0; i < 2; ++i) {
    ComPtr<IDispatch> item;
    Page::Demand(all)->item(Variant::Int(i).get(), Variant::Int(0).get(), &item);
    names += Answer(S_OK, item.Get());
  }
  return names;
}

std::string Contains(const std::string& text, const char* part) {
  return text.contains(part) ? "there" : "none";
}

std::string AllUnder(const Page& page, const wchar_t* id) {
  ComPtr<IDispatch> all;
  const HRESULT result = page.Element(id)->get_all(&all);
  return Answer(result, all.Get());
}

/// Counts a held collection's members before and after the page grows by one.
std::string LengthWhilePageGrows(const Page& page) {
  ComPtr<IHTMLElementCollection> found;
  LONG before = 0;
  LONG after = 0;
  page.As<IHTMLDocument3>()->getElementsByTagName(Bstr(L"em").get(), &found);
  Page::Demand(found)->get_length(&before);
  Run(page, L"document.getElementById('last').appendChild(document.createElement('em'))");
  const HRESULT result = found->get_length(&after);
  Run(page, L"document.getElementById('last').innerHTML = ''");
  return Answer(result) + " " + std::to_string(before) + " " + std::to_string(after);
}

std::string Mode(const Page& page) {
  Variant mode;
  const HRESULT result = page.As<IHTMLDocument6>()->get_documentMode(mode.put());
  return Answer(result, mode);
}

std::string CompatMode(const Page& page) {
  return Text(page.As<IHTMLDocument5>(), &IHTMLDocument5::get_compatMode);
}

/// The window's own document is another object than the one that the page's window hands out.
std::string IsNodeDocumentTheContainer(const Page& page) {
  ComPtr<IHTMLWindow2> window;
  ComPtr<IHTMLDocument2> node;
  page.document->get_parentWindow(&window);
  window->get_document(&node);
  return com::IsSameObject(Page::Demand(node).Get(), page.document.Get()) ? "same" : "another";
}

std::string Title(const Page& page) {
  Run(page, L"document.title = ''");
  const std::string answer = Text(page.document, &IHTMLDocument2::get_title);
  Run(page, L"document.title = 'facts'");
  return answer;
}

/// Whether the address ends in the part that the page was opened at.
std::string Fragment(const Page& page) {
  return Contains(Text(page.document, &IHTMLDocument2::get_URL), "#part'");
}

std::string IsEventTarget(const Page& page) {
  ComPtr<IEventTarget> target;
  return Answer(page.Element(L"kids")->QueryInterface(IID_PPV_ARGS(&target)));
}

std::string PageSource(const Page& page) {
  const std::string source = Text(Root(page), &IHTMLElement::get_outerHTML);
  return Contains(source, "DOCTYPE") + " " + Contains(source, "</html>");
}

const Fact kFacts[] = {
    {"document-mode", k5, Mode, "VT_R4 5"},
    {"document-mode", k7, Mode, "VT_R4 7"},
    {"document-mode", k8, Mode, "VT_R4 8"},
    {"document-mode", k9, Mode, "VT_R4 9"},
    {"document-mode", k10, Mode, "VT_R4 10"},
    {"document-mode", k11, Mode, "VT_R4 11"},
    {"compat-mode", k5, CompatMode, "'BackCompat'"},
    {"compat-mode", kAll & ~k5, CompatMode, "'CSS1Compat'"},
    {"document7", kAll,
     [](const Page& page) { return Answer(S_OK, com::Query<IHTMLDocument7>(page.document).Get()); },
     "document"},
    {"event-target", kTo8, IsEventTarget, "E_NOINTERFACE"},
    {"event-target", kFrom9, IsEventTarget, "S_OK"},
    {"two-documents", kAll, IsNodeDocumentTheContainer, "another"},
    {"title-empty", kAll, Title, "''"},
    {"url-fragment", kAll, Fragment, "there"},
    {"cookie-none", kAll, [](const Page& page) { return Text(page.document, &IHTMLDocument2::get_cookie); },
     "NULL"},
    {"ready-state", kAll,
     [](const Page& page) { return Text(page.document, &IHTMLDocument2::get_readyState); }, "'complete'"},
    {"outer-html-root", kAll, PageSource, "none there"},
    // Elements by id and name.
    {"id-none", kAll, [](const Page& page) { return ById(page, L"none"); }, "NULL"},
    {"id-or-name", kTo7, [](const Page& page) { return ById(page, L"named"); }, "<SPAN>"},
    {"id-or-name", kFrom8, [](const Page& page) { return ById(page, L"named"); }, "NULL"},
    {"id-name-order", kTo7, [](const Page& page) { return ById(page, L"clash"); }, "<A>"},
    {"id-name-order", kFrom8, [](const Page& page) { return ById(page, L"clash"); }, "<I#clash>"},
    {"id-case", kTo7, [](const Page& page) { return ById(page, L"KIDS"); }, "<DIV#kids>"},
    {"id-case", kFrom8, [](const Page& page) { return ById(page, L"KIDS"); }, "NULL"},
    {"name-none", kAll, [](const Page& page) { return ByName(page, L"none"); }, "[]"},
    {"name-case", kAll, [](const Page& page) { return ByName(page, L"NAMED"); }, "[<SPAN>]"},
    {"name-or-id", kTo8 | k9, [](const Page& page) { return ByName(page, L"kids"); }, "[<DIV#kids>]"},
    {"name-or-id", k10 | k11, [](const Page& page) { return ByName(page, L"kids"); }, "[]"},
    {"name-invented", kAll, [](const Page& page) { return ByName(page, L"ghost"); }, "[]"},
    // Elements by tag and class.
    {"tag-case", kAll, [](const Page& page) { return ByTag(page, L"sPaN"); }, "[<SPAN>]"},
    {"tag-under", kAll, [](const Page& page) { return ByTagUnder(page, L"nest", L"div"); }, "[<DIV#nested>]"},
    {"class-none", kAll, [](const Page& page) { return ByClass(page, L"none"); }, "[]"},
    {"class", kAll, [](const Page& page) { return ByClass(page, L"two"); }, "[<P#first><B#second>]"},
    {"class-several", kAll, [](const Page& page) { return ByClass(page, L"two one"); }, "[<P#first>]"},
    {"class-under", kAll, [](const Page& page) { return ByClassUnder(page, L"kids", L"two"); },
     "[<P#first><B#second>]"},
    {"class-under-none", kAll, [](const Page& page) { return ByClassUnder(page, L"last", L"two"); }, "[]"},
    {"collection-live", kAll, LengthWhilePageGrows, "S_OK 0 1"},
    // All elements.
    {"all-order", kFrom9 | k5, FirstOfAll, "<HTML><HEAD>"},
    {"all-implied", kAll, [](const Page& page) { return AllUnder(page, L"bare"); },
     "[<TABLE><TBODY><TR><TD>]"},
    {"all-noscript", kAll, [](const Page& page) { return AllUnder(page, L"quiet"); }, "[<NOSCRIPT>]"},
    {"all-comments", k5, [](const Page& page) { return AllUnder(page, L"kids"); },
     "[<P#first><!><B#second>]"},
    {"all-comments", kFrom9, [](const Page& page) { return AllUnder(page, L"kids"); },
     "[<P#first><B#second>]"},
    {"all-under", kAll, [](const Page& page) { return AllUnder(page, L"nest"); }, "[<DIV#nested><I>]"},
};

const OtherPage kOtherPages[] = {
    {"mode-list", "<meta http-equiv=X-UA-Compatible content='IE= 5 , 8 , 7'>", "VT_R4 8 'BackCompat'"},
    {"mode-list", "<meta http-equiv=X-UA-Compatible content='IE=5, edge,8'>", "VT_R4 11 'BackCompat'"},
    {"mode-list", "<meta http-equiv=X-UA-Compatible content='IE=5, 7;9'>", "VT_R4 7 'BackCompat'"},
    {"mode-list", "<meta http-equiv=X-UA-Compatible content='IE=5, foo,8'>", "VT_R4 5 'BackCompat'"},
    {"mode-list", "<meta http-equiv=X-UA-Compatible content='IE=5, ,,7'>", "VT_R4 5 'BackCompat'"},
    {"mode-emulated", "<meta http-equiv=X-UA-Compatible content='IE=EmulateIE9'>", "VT_R4 5 'BackCompat'"},
    {"mode-emulated", "<meta http-equiv=X-UA-Compatible content='IE=EmulateIE10'>", "VT_R4 10 'BackCompat'"},
    {"mode-emulated", "<!DOCTYPE html><meta http-equiv=X-UA-Compatible content='IE=EmulateIE8'>",
     "VT_R4 8 'CSS1Compat'"},
    {"comment-before-doctype", "<!-- first --><!DOCTYPE html>", "VT_R4 5 'BackCompat'"},
};

}  // namespace

std::span<const Fact> DocumentFacts() { return kFacts; }
std::span<const OtherPage> OtherPages() { return kOtherPages; }
std::string ModeAndCompatMode(const Page& page) { return Mode(page) + " " + CompatMode(page); }

}  // namespace quillmate::test
