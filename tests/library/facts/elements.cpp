// Elements: their texts, their place in the tree, their attributes.
#include "facts/fact.h"

namespace quillmate::test {
namespace {

constexpr LONG kAsWritten = 2;

template <HRESULT (STDMETHODCALLTYPE IHTMLElement::*kGet)(BSTR*)>
std::string TextOf(const Page& page, const wchar_t* id) {
  return Text(page.Element(id), kGet);
}

/// Read as the library reads attributes: as written.
std::string Attribute(const Page& page, const wchar_t* id, const wchar_t* name, LONG flags = kAsWritten) {
  Variant value;
  const HRESULT result = page.Element(id)->getAttribute(Bstr(name).get(), flags, value.put());
  return Answer(result, value);
}

/// What kind of value an attribute has.
std::string AttributeKind(const Page& page, const wchar_t* id, const wchar_t* name) {
  const std::string answer = Attribute(page, id, name);
  return answer.substr(0, answer.find(' '));
}

std::string CssText(const Page& page) {
  Variant value;
  page.Element(L"hidden")->getAttribute(Bstr(L"style").get(), kAsWritten, value.put());
  return Text(Page::Demand(value.As<IHTMLStyle>()), &IHTMLStyle::get_cssText);
}

/// Whether an anchor's address is the whole one, of which the source has the end.
std::string AnchorAddress(const Page& page) {
  Bstr address;
  const HRESULT result = page.Element<IHTMLAnchorElement>(L"link")->get_href(address.put());
  const bool whole =
      address.view().starts_with(L"http://127.0.0.1:") && address.view().ends_with(L"/next.htm?a=b");
  return Answer(result) + (whole ? " whole" : " as written");
}

std::string AttributeNode(const Page& page, const wchar_t* id, const wchar_t* name) {
  ComPtr<IHTMLDOMAttribute> node;
  const HRESULT result = page.Element<IHTMLElement4>(id)->getAttributeNode(Bstr(name).get(), &node);
  if (node == nullptr) return Answer(result) + " no node";
  VARIANT_BOOL specified = VARIANT_FALSE;
  const HRESULT read = node->get_specified(&specified);
  return Answer(read) + (specified != VARIANT_FALSE ? " written" : " not written");
}

/// Disables by program, and reads the attribute that this makes.
std::string DisabledByProgram(const Page& page) {
  Run(page, L"document.getElementById('field').disabled = true");
  const std::string answer = Attribute(page, L"field", L"disabled");
  Run(page, L"document.getElementById('field').disabled = false");
  return answer;
}

std::string ParentOfRoot(const Page& page) {
  ComPtr<IHTMLElement> root;
  ComPtr<IHTMLElement> parent;
  page.As<IHTMLDocument3>()->get_documentElement(&root);
  const HRESULT result = Page::Demand(root)->get_parentElement(&parent);
  return Answer(result, parent.Get());
}

/// Writes a text over what an element holds, and counts the elements that are left in it.
std::string PutInnerText(const Page& page) {
  const auto element = page.Element(L"written-over");
  ComPtr<IDispatch> left;
  const HRESULT result = element->put_innerText(Bstr(L"plain").get());
  element->get_children(&left);
  return Answer(result) + " " + Text(element, &IHTMLElement::get_innerText) + " " + Answer(S_OK, left.Get());
}

/// Member numbers are asked by name; what a constant of the type library answers as a number.
std::string InvokeConstant(const Page& page) {
  constexpr DISPID kInnerText = -2147417085;
  Variant value;
  DISPPARAMS none{};
  const HRESULT result = page.Element(L"c1")->Invoke(
      kInnerText, IID_NULL, LOCALE_INVARIANT, DISPATCH_PROPERTYGET, &none, value.put(), nullptr, nullptr);
  return Answer(result, value);
}

DISPID NumberOf(const Page& page, const wchar_t* id, const wchar_t* member) {
  std::wstring text(member);
  LPOLESTR names[] = {text.data()};
  DISPID number = DISPID_UNKNOWN;
  page.Element(id)->GetIDsOfNames(IID_NULL, names, 1, LOCALE_INVARIANT, &number);
  return number;
}

std::string LateBoundText(const Page& page, const wchar_t* id) {
  Variant value;
  DISPPARAMS none{};
  const HRESULT result =
      page.Element(id)->Invoke(NumberOf(page, id, L"innerText"), IID_NULL, LOCALE_INVARIANT,
                               DISPATCH_PROPERTYGET, &none, value.put(), nullptr, nullptr);
  return Answer(result, value);
}

std::string NumbersOfTwoTypes(const Page& page) {
  const bool same = NumberOf(page, L"c1", L"innerText") == NumberOf(page, L"kids", L"innerText");
  return same ? "same" : "different";
}

constexpr auto* kId = TextOf<&IHTMLElement::get_id>;
constexpr auto* kClassName = TextOf<&IHTMLElement::get_className>;
constexpr auto* kInnerText = TextOf<&IHTMLElement::get_innerText>;
constexpr auto* kTagName = TextOf<&IHTMLElement::get_tagName>;

std::string IdOfBody(const Page& page) {
  ComPtr<IHTMLElement> body;
  page.document->get_body(&body);
  return Text(Page::Demand(body), &IHTMLElement::get_id);
}

const Fact kFacts[] = {
    {"empty-id", kAll, IdOfBody, "NULL"},
    {"empty-class-name", kAll, [](const Page& page) { return kClassName(page, L"kids"); }, "NULL"},
    {"empty-inner-text", kAll, [](const Page& page) { return kInnerText(page, L"last"); }, "NULL"},
    {"id", kAll, [](const Page& page) { return kId(page, L"kids"); }, "'kids'"},
    {"tag-name", kAll, [](const Page& page) { return kTagName(page, L"kids"); }, "'DIV'"},
    {"tag-name", kAll, [](const Page& page) { return kTagName(page, L"invented"); }, "'TEST'"},
    {"tag-name", kFrom9, [](const Page& page) { return kTagName(page, L"circle"); }, "'circle'"},
    {"inner-text-list", kAll, [](const Page& page) { return kInnerText(page, L"list"); }, "'opt1opt2'"},
    {"put-inner-text", kAll, PutInnerText, "S_OK 'plain' []"},
    {"parent-of-root", kAll, ParentOfRoot, "NULL"},
    // Attributes.
    {"attribute-missing", kAll, [](const Page& page) { return Attribute(page, L"kids", L"nothing"); },
     "VT_NULL"},
    {"attribute-native-type", kTo7, [](const Page& page) { return Attribute(page, L"item", L"value", 0); },
     "VT_I4 3"},
    {"attribute-native-type", kFrom8, [](const Page& page) { return Attribute(page, L"item", L"value", 0); },
     "VT_BSTR '3'"},
    {"attribute-literal", kAll, [](const Page& page) { return Attribute(page, L"link", L"href"); },
     "VT_BSTR 'next.htm?a=b'"},
    {"attribute-literal", kTo7, [](const Page& page) { return Attribute(page, L"item", L"value"); },
     "VT_BSTR '3'"},
    {"anchor-address", kAll, AnchorAddress, "S_OK whole"},
    {"attribute-case", kAll, [](const Page& page) { return Attribute(page, L"link", L"HREF"); },
     "VT_BSTR 'next.htm?a=b'"},
    {"attribute-unset", kTo7, [](const Page& page) { return Attribute(page, L"kids", L"className"); },
     "VT_BSTR NULL"},
    {"attribute-unset", kTo7, [](const Page& page) { return Attribute(page, L"kids", L"title"); },
     "VT_BSTR NULL"},
    {"attribute-unset", kFrom8, [](const Page& page) { return Attribute(page, L"kids", L"title"); },
     "VT_NULL"},
    {"attribute-property", kTo7, [](const Page& page) { return Attribute(page, L"placed", L"offsetWidth"); },
     "VT_BSTR '40'"},
    {"attribute-property", kFrom9,
     [](const Page& page) { return Attribute(page, L"placed", L"offsetWidth"); }, "VT_NULL"},
    {"attribute-class", kTo7, [](const Page& page) { return Attribute(page, L"first", L"class"); },
     "VT_NULL"},
    {"attribute-class", kFrom8, [](const Page& page) { return Attribute(page, L"first", L"class"); },
     "VT_BSTR 'one two'"},
    {"attribute-class-name", kTo7, [](const Page& page) { return Attribute(page, L"first", L"className"); },
     "VT_BSTR 'one two'"},
    {"attribute-class-name", kFrom8, [](const Page& page) { return Attribute(page, L"first", L"className"); },
     "VT_NULL"},
    {"attribute-for", kTo7, [](const Page& page) { return Attribute(page, L"label", L"htmlFor"); },
     "VT_BSTR 'field'"},
    {"attribute-for", kTo7, [](const Page& page) { return Attribute(page, L"label", L"for"); }, "VT_NULL"},
    {"attribute-for", kFrom9, [](const Page& page) { return Attribute(page, L"label", L"for"); },
     "VT_BSTR 'field'"},
    {"attribute-style", kTo7, [](const Page& page) { return AttributeKind(page, L"hidden", L"style"); },
     "VT_DISPATCH"},
    {"attribute-style", kTo7, CssText, "'display: none;'"},
    {"attribute-style", k8, [](const Page& page) { return Attribute(page, L"kids", L"style"); }, "VT_NULL"},
    {"attribute-style", kFrom9, [](const Page& page) { return Attribute(page, L"hidden", L"style"); },
     "VT_BSTR 'display: none'"},
    {"attribute-event", kTo7, [](const Page& page) { return AttributeKind(page, L"button", L"onclick"); },
     "VT_DISPATCH"},
    {"attribute-event", kFrom9, [](const Page& page) { return AttributeKind(page, L"button", L"onclick"); },
     "VT_BSTR"},
    {"attribute-boolean", kFrom9, [](const Page& page) { return Attribute(page, L"field", L"disabled"); },
     "VT_NULL"},
    {"attribute-boolean", kFrom9, DisabledByProgram, "VT_BSTR NULL"},
    {"attribute-value", k8, [](const Page& page) { return Attribute(page, L"typed", L"value"); },
     "VT_BSTR 'now'"},
    {"attribute-value", kFrom9, [](const Page& page) { return Attribute(page, L"typed", L"value"); },
     "VT_BSTR 'first'"},
    {"attribute-node", kAll, [](const Page& page) { return AttributeNode(page, L"link", L"href"); },
     "S_OK written"},
    {"attribute-node", kTo7, [](const Page& page) { return AttributeNode(page, L"kids", L"title"); },
     "S_OK not written"},
    {"attribute-node", kFrom9, [](const Page& page) { return AttributeNode(page, L"kids", L"title"); },
     "S_OK no node"},
    {"attribute-node", kAll, [](const Page& page) { return AttributeNode(page, L"kids", L"nothing"); },
     "S_OK no node"},
    // Members by name.
    {"member-by-name", kAll, [](const Page& page) { return LateBoundText(page, L"c1"); }, "VT_BSTR '1'"},
    {"member-numbers", kFrom9, InvokeConstant, "DISP_E_MEMBERNOTFOUND"},
    {"member-numbers", kTo8, InvokeConstant, "VT_BSTR '1'"},
    {"member-numbers", kFrom9, NumbersOfTwoTypes, "different"},
};

}  // namespace

std::span<const Fact> ElementFacts() { return kFacts; }

}  // namespace quillmate::test
