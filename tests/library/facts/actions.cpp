// What elements do when a caller acts on them, and where they are.
#include "facts/fact.h"

namespace quillmate::test {
namespace {

std::string Title(const Page& page, const wchar_t* id) {
  return Text(page.Element(id), &IHTMLElement::get_title);
}

/// Clicks, and reads what the page's handlers had written when the call returned.
std::string Click(const Page& page, const wchar_t* id, const wchar_t* written) {
  const HRESULT result = page.Element(id)->click();
  return Answer(result) + " " + Title(page, written);
}

/// Whether a click on a field moved the focus to it.
std::string FocusAfterClick(const Page& page) {
  Run(page, L"document.getElementById('typed').focus()");
  page.Element(L"field")->click();
  Run(page, L"document.getElementById('kids').title = document.activeElement.id");
  const std::string active = Title(page, L"kids");
  Run(page, L"document.getElementById('kids').title = ''");
  return active;
}

/// Gives focus to a field whose handler is busy for a while: whether the call waited for it, and whether the
/// next call finds it done.
std::string Focus(const Page& page) {
  Run(page, L"document.activeElement.blur()");
  const ULONGLONG begin = GetTickCount64();
  const HRESULT result = page.Element<IHTMLElement2>(L"busy")->focus();
  const bool waited = GetTickCount64() - begin >= 1500;
  const std::string title = Title(page, L"busy");
  Run(page, L"document.getElementById('busy').title = ''");
  return Answer(result) + (waited ? " after" : " before") + " the handler, then " + title;
}

ComPtr<IHTMLCurrentStyle> Style(const Page& page, const wchar_t* id) {
  ComPtr<IHTMLCurrentStyle> style;
  page.Element<IHTMLElement2>(id)->get_currentStyle(&style);
  return Page::Demand(style);
}

std::string Display(const Page& page, const wchar_t* id) {
  return Text(Style(page, id), &IHTMLCurrentStyle::get_display);
}

std::string Length(const Page& page, HRESULT (STDMETHODCALLTYPE IHTMLCurrentStyle::*get)(VARIANT*)) {
  Variant length;
  const HRESULT result = (Style(page, L"styled").Get()->*get)(length.put());
  return Answer(result, length);
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

/// The rectangle of an element that a script has taken out of the page.
std::string RectangleOfDetached(const Page& page) {
  const auto element = page.Element<IHTMLElement2>(L"far");
  ComPtr<IHTMLRect> rect;
  Run(page,
      L"taken = document.getElementById('far'); next = taken.nextSibling; "
      L"taken.parentNode.removeChild(taken)");
  const HRESULT result = element->getBoundingClientRect(&rect);
  Run(page, L"next.parentNode.insertBefore(taken, next)");
  return Answer(result);
}

LONG TopOf(const Page& page, const wchar_t* id) {
  ComPtr<IHTMLRect> rect;
  LONG top = 0;
  page.Element<IHTMLElement2>(id)->getBoundingClientRect(&rect);
  Page::Demand(rect)->get_top(&top);
  return top;
}

/// Scrolls an element in the middle of the page to the view's upper or lower edge.
std::string ScrollIntoView(const Page& page, VARIANT_BOOL at_top) {
  VARIANT argument = {};
  argument.vt = VT_BOOL;
  argument.boolVal = at_top;
  const HRESULT result = page.Element(L"far")->scrollIntoView(argument);
  const LONG top = TopOf(page, L"far");
  Run(page, L"scrollTo(0, 0)");
  return Answer(result) + (top < 20 ? " at the top" : " below the top");
}

/// The width of the frame around the page, as the root element tells it.
std::string FrameOfRoot(const Page& page) {
  ComPtr<IHTMLElement> root;
  LONG left = -1;
  LONG top = -1;
  page.As<IHTMLDocument3>()->get_documentElement(&root);
  const auto measured = Page::Demand(com::Query<IHTMLElement2>(root));
  const HRESULT result = measured->get_clientLeft(&left);
  measured->get_clientTop(&top);
  return Answer(result) + " " + std::to_string(left) + "," + std::to_string(top);
}

std::string ClientSize(const Page& page) {
  LONG width = 0;
  LONG height = 0;
  page.Element<IHTMLElement2>(L"placed")->get_clientWidth(&width);
  const HRESULT result = page.Element<IHTMLElement2>(L"placed")->get_clientHeight(&height);
  return Answer(result) + " " + std::to_string(width) + "x" + std::to_string(height);
}

const Fact kFacts[] = {
    {"click", kAll, [](const Page& page) { return Click(page, L"button", L"button"); }, "S_OK 'clicked'"},
    {"click-submit", kAll, [](const Page& page) { return Click(page, L"submit", L"form"); },
     "S_OK 'click submit'"},
    {"click-focus", kAll, FocusAfterClick, "'typed'"},
    {"focus", k5 | k11, Focus, "S_OK before the handler, then 'focused'"},
    {"current-style", kAll, [](const Page& page) { return Display(page, L"hidden"); }, "'none'"},
    {"current-style", kAll, [](const Page& page) { return Display(page, L"kids"); }, "'block'"},
    {"current-style-units", kAll,
     [](const Page& page) { return Length(page, &IHTMLCurrentStyle::get_paddingLeft); }, "VT_BSTR '1em'"},
    {"current-style-units", kAll,
     [](const Page& page) { return Length(page, &IHTMLCurrentStyle::get_paddingTop); }, "VT_BSTR '12pt'"},
    {"current-style-units", kAll,
     [](const Page& page) { return Length(page, &IHTMLCurrentStyle::get_width); }, "VT_BSTR 'auto'"},
    {"rectangle", kFrom9, Rectangle, "S_OK 40x30 at 200,100"},
    {"rectangle", kTo7, Rectangle, "S_OK 40x30 at 202,102"},
    {"rectangle-detached", kAll, RectangleOfDetached, "E_FAIL"},
    {"root-frame", k5 | kFrom9, FrameOfRoot, "S_OK 0,0"},
    {"root-frame", k7, FrameOfRoot, "S_OK 2,2"},
    {"client-size", kAll, ClientSize, "S_OK 40x30"},
    {"scroll-into-view", kAll, [](const Page& page) { return ScrollIntoView(page, VARIANT_TRUE); },
     "S_OK at the top"},
    {"scroll-into-view", kAll, [](const Page& page) { return ScrollIntoView(page, 1); }, "S_OK at the top"},
    {"scroll-into-view", kAll, [](const Page& page) { return ScrollIntoView(page, VARIANT_FALSE); },
     "S_OK below the top"},
};

}  // namespace

std::span<const Fact> ActionFacts() { return kFacts; }

}  // namespace quillmate::test
