// The registry of remembered elements.
#include "locate/element_registry.h"

#include <functional>
#include <map>

namespace quillmate::locate {
namespace {

using ElementRegistry = std::map<std::string, com::ComPtr<IHTMLElement>, std::less<>>;

// Never destroyed: the library is unloaded under the loader lock, where releasing another process's object
// hangs.
ElementRegistry& Registry() {
  static ElementRegistry& registry = *new ElementRegistry;
  return registry;
}

}  // namespace

void Remember(std::string name, com::ComPtr<IHTMLElement> element) {
  Registry().insert_or_assign(std::move(name), std::move(element));
}

com::ComPtr<IHTMLElement> Recall(std::string_view name) {
  const auto entry = Registry().find(name);
  return entry != Registry().end() ? entry->second : com::ComPtr<IHTMLElement>();
}

}  // namespace quillmate::locate
