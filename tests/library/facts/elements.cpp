// Elements: their texts, their attributes, their place in the tree, what they do.
#include "facts/fact.h"

namespace quillmate::test {
namespace {

template <HRESULT (STDMETHODCALLTYPE IHTMLElement::*kGet)(BSTR*)>
std::string Text(const Page& page, const wchar_t* id) {
  Bstr text;
  const HRESULT result = (page.Element(id).Get()->*kGet)(text.put());
  return Answer(result, text);
}

std::string Attribute(const Page& page, const wchar_t* id, const wchar_t* name, LONG flags = 0) {
  Variant value;
  const HRESULT result = page.Element(id)->getAttribute(Bstr(name).get(), flags, value.put());
  return Answer(result, value);
}

std::string Root(const Page& page, HRESULT (STDMETHODCALLTYPE IHTMLElement::*get)(IHTMLElement**)) {
  ComPtr<IHTMLElement> root;
  ComPtr<IHTMLElement> answer;
  page.As<IHTMLDocument3>()->get_documentElement(&root);
  const HRESULT result = (root.Get()->*get)(&answer);
  return Answer(result, answer.Get());
}

/// Clicks, and reads what the page's handlers had written when the call returned.
std::string Click(const Page& page) {
  const auto button = page.Element(L"button");
  Bstr text;
  const HRESULT result = button->click();
  button->get_title(text.put());
  return Answer(result, text);
}

std::string Display(const Page& page, const wchar_t* id) {
  ComPtr<IHTMLCurrentStyle> style;
  Bstr display;
  page.Element<IHTMLElement2>(id)->get_currentStyle(&style);
  const HRESULT result = Page::Demand(style)->get_display(display.put());
  return Answer(result, display);
}

std::string Rectangle(const Page& page) {
  ComPtr<IHTMLRect> rect;
  page.Element<IHTMLElement2>(L"placed")->getBoundingClientRect(&rect);
  LONG left = 0, top = 0, right = 0, bottom = 0;
  const HRESULT result = Page::Demand(rect)->get_left(&left);
  rect->get_top(&top);
  rect->get_right(&right);
  rect->get_bottom(&bottom);
  return Answer(result) + " " + std::to_string(right - left) + "x" + std::to_string(bottom - top) + " at " +
         std::to_string(left) + "," + std::to_string(top);
}

LONG TopOf(const Page& page, const wchar_t* id) {
  ComPtr<IHTMLRect> rect;
  LONG top = 0;
  page.Element<IHTMLElement2>(id)->getBoundingClientRect(&rect);
  Page::Demand(rect)->get_top(&top);
  return top;
}

/// Scrolls an element in the middle of the page to the view's upper or lower edge.
std::string ScrollIntoView(const Page& page, const Variant& at_top) {
  const HRESULT result = page.Element(L"far")->scrollIntoView(at_top.get());
  const LONG top = TopOf(page, L"far");
  page.Element(L"kids")->scrollIntoView(Variant::Bool(true).get());
  return Answer(result) + (top < 20 ? " at the top" : " below the top");
}

/// The width of the frame around the page, as the root element tells it.
std::string Frame(const Page& page) {
  ComPtr<IHTMLElement> root;
  LONG left = -1;
  page.As<IHTMLDocument3>()->get_documentElement(&root);
  const HRESULT result = Page::Demand(com::Query<IHTMLElement2>(root))->get_clientLeft(&left);
  return Answer(result, left);
}

std::string Focus(const Page& page) {
  ComPtr<IHTMLElement> active;
  const HRESULT result = page.Element<IHTMLElement2>(L"field")->focus();
  page.document->get_activeElement(&active);
  return Answer(result, active.Get());
}

const Fact kFacts[] = {
    {"dom.c:4420-36", kAll,
     [](const Page& page) { return Text<&IHTMLElement::get_className>(page, L"kids"); }, "NULL"},
    {"dom.c:4420-36", kAll, [](const Page& page) { return Text<&IHTMLElement::get_title>(page, L"kids"); },
     "NULL"},
    {"dom.c:3068-82", kAll,
     [](const Page& page) { return Text<&IHTMLElement::get_innerText>(page, L"last"); }, "NULL"},
    {"dom.c:3068-82", kAll,
     [](const Page& page) { return Text<&IHTMLElement::get_innerHTML>(page, L"last"); }, "NULL"},
    {"dom.c:11498-99", kAll,
     [](const Page& page) { return Text<&IHTMLElement::get_tagName>(page, L"invented"); }, "'TEST'"},
    {"dom.c:596-97", kFrom9,
     [](const Page& page) { return Text<&IHTMLElement::get_tagName>(page, L"circle"); }, "'circle'"},
    {"dom.c:10239", kAll, [](const Page& page) { return Text<&IHTMLElement::get_innerText>(page, L"list"); },
     "'opt1opt2'"},
    {"dom.c:10199-10231", kAll, [](const Page& page) { return Root(page, &IHTMLElement::get_parentElement); },
     "NULL"},
    // Attributes.
    {"dom.c:1526-29", kAll, [](const Page& page) { return Attribute(page, L"kids", L"nothing"); }, "VT_NULL"},
    {"dom.c:1533-76", kTo7, [](const Page& page) { return Attribute(page, L"placed", L"offsetWidth"); },
     "VT_I4 40"},
    {"documentmode.js:2796-2815", kFrom9,
     [](const Page& page) { return Attribute(page, L"placed", L"offsetWidth"); }, "VT_NULL"},
    {"documentmode.js:2730-40", kTo7, [](const Page& page) { return Attribute(page, L"first", L"class"); },
     "VT_NULL"},
    {"documentmode.js:2730-40", kFrom8, [](const Page& page) { return Attribute(page, L"first", L"class"); },
     "VT_BSTR 'one two'"},
    {"documentmode.js:2730-40", kTo7,
     [](const Page& page) { return Attribute(page, L"first", L"className"); }, "VT_BSTR 'one two'"},
    {"documentmode.js:2730-40", kFrom8,
     [](const Page& page) { return Attribute(page, L"first", L"className"); }, "VT_NULL"},
    {"Sizzle attribute/property interpolation", kFrom8,
     [](const Page& page) { return Attribute(page, L"link", L"href"); }, "VT_BSTR 'next.htm?a=b'"},
    {"Sizzle attribute/property interpolation", kTo7,
     [](const Page& page) { return Attribute(page, L"link", L"href", 2); }, "VT_BSTR 'next.htm?a=b'"},
    {"jQuery support.style", kFrom9, [](const Page& page) { return Attribute(page, L"hidden", L"style"); },
     "VT_BSTR 'display: none'"},
    {"dom.js:729-750", kFrom9, [](const Page& page) { return Attribute(page, L"field", L"disabled"); },
     "VT_NULL"},
    {"Sizzle getAttribute lies", kTo7,
     [](const Page& page) { return Attribute(page, L"field", L"disabled"); }, "VT_BOOL false"},
    {"Sizzle Use defaultValue in place of getAttribute(value)", kTo8,
     [](const Page& page) { return Attribute(page, L"typed", L"value"); }, "VT_BSTR 'now'"},
    {"Sizzle Use defaultValue in place of getAttribute(value)", kFrom9,
     [](const Page& page) { return Attribute(page, L"typed", L"value"); }, "VT_BSTR 'first'"},
    // Actions and geometry.
    {"events.c:2622-40", kAll, Click, "'clicked'"},
    {"dom.c:8579", kAll, [](const Page& page) { return Display(page, L"hidden"); }, "'none'"},
    {"dom.c:8579", kAll, [](const Page& page) { return Display(page, L"kids"); }, "'block'"},
    {"dom.c:6084-6112", kFrom9, Rectangle, "S_OK 40x30 at 200,100"},
    {"fbjs getElementRect", kTo7, Rectangle, "S_OK 40x30 at 202,102"},
    {"hh869631", k5, Frame, "0"},
    {"hh869631", k7, Frame, "2"},
    {"hh869631", kFrom9, Frame, "0"},
    {"htmlelem.c:1711-36", kAll, [](const Page& page) { return ScrollIntoView(page, Variant::Bool(true)); },
     "S_OK at the top"},
    {"htmlelem.c:1711-36", kAll, [](const Page& page) { return ScrollIntoView(page, Variant::Bool(false)); },
     "S_OK below the top"},
    {"events.c:3159-72", kAll, Focus, "<INPUT#field>"},
};

}  // namespace

std::span<const Fact> ElementFacts() { return kFacts; }

}  // namespace quillmate::test
