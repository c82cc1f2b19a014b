// Which interfaces an object of a page has, by what it is.
#pragma once

#include <string_view>
#include <vector>

#include "dom/facet_type.h"

namespace testbrowser::dom {

struct ObjectKind {
  std::string_view name;
  /// The first is the one that late-bound callers see.
  std::vector<const FacetType*> facets;
  /// Those that a document has in modes 9 and up only.
  std::vector<const FacetType*> modern_facets;
};

/// @param name as the agent gives it: "collection", "element:INPUT"; an element of a tag without interfaces
/// of its own is a plain element, anything else unknown a plain script object.
const ObjectKind& KindNamed(std::string_view name);

}  // namespace testbrowser::dom
