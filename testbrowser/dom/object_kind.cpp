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

Names operator+(Names first, const Names& second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

const Names kDocument = {"IHTMLDocument2", "IHTMLDocument3", "IHTMLDocument5", "IHTMLDocument6",
                         "IHTMLDocument7"};
const Names kElement = {"IHTMLElement", "IHTMLElement2", "IHTMLElement3", "IHTMLElement4", "IHTMLElement6"};
const Names kFrame = kElement + Names{"IHTMLFrameBase", "IHTMLFrameBase2"};
const Names kTarget = {"IEventTarget"};

std::vector<KindRow> Rows() {
  return {
      {"container", kDocument, {}},
      {"document", kDocument, kTarget + Names{"IDocumentEvent"}},
      {"window", {"IHTMLWindow2", "IHTMLWindow3"}, kTarget},
      {"collection", {"IHTMLElementCollection"}, {}},
      {"attribute", {"IHTMLDOMAttribute"}, {}},
      {"rect", {"IHTMLRect"}, {}},
      {"style", {"IHTMLStyle"}, {}},
      {"currentStyle", {"IHTMLCurrentStyle"}, {}},
      {"event", {}, {"IDOMEvent"}},
      {"comment", kElement, {}},
      {"element", kElement, kTarget},
      {"element:A", kElement + Names{"IHTMLAnchorElement"}, kTarget},
      {"element:BUTTON", kElement + Names{"IHTMLButtonElement"}, kTarget},
      {"element:FRAME", kFrame, kTarget},
      {"element:IFRAME", kFrame, kTarget},
      {"element:INPUT", kElement + Names{"IHTMLInputElement"}, kTarget},
      {"element:OPTION", kElement + Names{"IHTMLOptionElement"}, kTarget},
      {"element:SELECT", kElement + Names{"IHTMLSelectElement", "IHTMLElementCollection"}, kTarget},
      {"element:TABLE", kElement + Names{"IHTMLTable"}, kTarget},
      {"element:TD", kElement, kTarget},
      {"element:TH", kElement, kTarget},
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
