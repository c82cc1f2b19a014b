#include "dom/object_kind.h"

#include <algorithm>
#include <cassert>
#include <map>

namespace testbrowser::dom {
namespace {

using Names = std::vector<std::string_view>;

struct KindRow {
  std::string_view name;
  Names interfaces;
  Names modern_interfaces;
};

const Names kDocument = {"IHTMLDocument2", "IHTMLDocument3", "IHTMLDocument4",
                         "IHTMLDocument5", "IHTMLDocument6", "IHTMLDocument7"};
const Names kNodeDocument = {"IHTMLDOMNode", "IHTMLDOMNode2"};
const Names kElement = {"IHTMLElement",  "IHTMLElement2", "IHTMLElement3", "IHTMLElement4",  "IHTMLElement5",
                        "IHTMLElement6", "IHTMLDOMNode",  "IHTMLDOMNode2", "IHTMLUniqueName"};
const Names kFrame = {"IHTMLFrameBase", "IHTMLFrameBase2", "IHTMLFrameBase3"};
const Names kTarget = {"IEventTarget"};

Names operator+(Names first, const Names& second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

std::vector<KindRow> Rows() {
  return {
      {"container", kDocument, {}},
      {"document", kDocument + kNodeDocument, kTarget + Names{"IDocumentEvent"}},
      {"window", {"IHTMLWindow2", "IHTMLWindow3", "IHTMLWindow4", "IHTMLWindow5", "IHTMLWindow6"}, kTarget},
      {"location", {"IHTMLLocation"}, {}},
      {"collection", {"IHTMLElementCollection", "IHTMLElementCollection2"}, {}},
      {"childNodes", {"IHTMLDOMChildrenCollection"}, {}},
      {"attributes", {"IHTMLAttributeCollection"}, {}},
      {"attribute", {"IHTMLDOMAttribute", "IHTMLDOMAttribute2"}, {}},
      {"rect", {"IHTMLRect"}, {}},
      {"rects", {"IHTMLRectCollection"}, {}},
      {"style", {"IHTMLStyle"}, {}},
      {"currentStyle", {"IHTMLCurrentStyle"}, {}},
      {"event", {"IHTMLEventObj"}, {"IDOMEvent"}},
      {"text", {"IHTMLDOMTextNode", "IHTMLDOMNode", "IHTMLDOMNode2"}, {}},
      {"comment", Names{"IHTMLCommentElement"} + kElement, {}},
      {"element", kElement, kTarget},
      {"element:A", kElement + Names{"IHTMLAnchorElement"}, kTarget},
      {"element:BODY", kElement + Names{"IHTMLBodyElement"}, kTarget},
      {"element:BUTTON", kElement + Names{"IHTMLButtonElement"}, kTarget},
      {"element:FORM", kElement + Names{"IHTMLFormElement"}, kTarget},
      {"element:FRAME", kElement + kFrame + Names{"IHTMLFrameElement", "IHTMLFrameElement3"}, kTarget},
      {"element:IFRAME", kElement + kFrame + Names{"IHTMLIFrameElement", "IHTMLIFrameElement3"}, kTarget},
      {"element:IMG", kElement + Names{"IHTMLImgElement"}, kTarget},
      {"element:INPUT", kElement + Names{"IHTMLInputElement", "IHTMLInputTextElement"}, kTarget},
      {"element:LABEL", kElement + Names{"IHTMLLabelElement"}, kTarget},
      {"element:OPTION", kElement + Names{"IHTMLOptionElement"}, kTarget},
      {"element:SCRIPT", kElement + Names{"IHTMLScriptElement"}, kTarget},
      {"element:SELECT", kElement + Names{"IHTMLSelectElement", "IHTMLElementCollection"}, kTarget},
      {"element:TABLE", kElement + Names{"IHTMLTable", "IHTMLTable2"}, kTarget},
      {"element:TBODY", kElement + Names{"IHTMLTableSection"}, kTarget},
      {"element:TFOOT", kElement + Names{"IHTMLTableSection"}, kTarget},
      {"element:THEAD", kElement + Names{"IHTMLTableSection"}, kTarget},
      {"element:TD", kElement + Names{"IHTMLTableCell"}, kTarget},
      {"element:TH", kElement + Names{"IHTMLTableCell"}, kTarget},
      {"element:TR", kElement + Names{"IHTMLTableRow"}, kTarget},
      {"element:TEXTAREA", kElement + Names{"IHTMLTextAreaElement"}, kTarget},
      {"object", {}, {}},
  };
}

const FacetType* FacetNamed(std::string_view name) {
  const auto found = std::ranges::find(FacetTypes(), name, &FacetType::name);
  assert(found != FacetTypes().end());
  return &*found;
}

std::vector<const FacetType*> FacetsNamed(const Names& names) {
  std::vector<const FacetType*> facets;
  std::ranges::transform(names, std::back_inserter(facets), FacetNamed);
  return facets;
}

const std::map<std::string_view, ObjectKind>& Kinds() {
  static const auto kinds = [] {
    std::map<std::string_view, ObjectKind> made;
    for (const KindRow& row : Rows()) {
      made.emplace(row.name,
                   ObjectKind{row.name, FacetsNamed(row.interfaces), FacetsNamed(row.modern_interfaces)});
    }
    return made;
  }();
  return kinds;
}

}  // namespace

const ObjectKind& KindNamed(std::string_view name) {
  if (const auto known = Kinds().find(name); known != Kinds().end()) return known->second;
  return Kinds().at(name.starts_with("element:") ? "element" : "object");
}

}  // namespace testbrowser::dom
