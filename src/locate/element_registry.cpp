#include "locate/element_registry.h"

#include <utility>

namespace quillmate {

void ElementRegistry::Remember(std::string name, com::ComPtr<IHTMLElement> element) {
  elements_.insert_or_assign(std::move(name), com::Agile<IHTMLElement>(std::move(element)));
}

com::ComPtr<IHTMLElement> ElementRegistry::Recall(std::string_view name) const {
  const auto entry = elements_.find(name);
  return entry != elements_.end() ? com::ComPtr<IHTMLElement>(entry->second.Get())
                                  : com::ComPtr<IHTMLElement>();
}

}  // namespace quillmate
