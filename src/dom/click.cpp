// The click command: the element's own click, or a mouse click at its place.
#include <utility>

#include "dom/commands.h"
#include "dom/manual_click.h"
#include "dom/worker_call.h"
#include "locate/element_search.h"

namespace quillmate::dom {

using namespace api;  // NOLINT(google-build-using-namespace): the result builders read as words

Result Click(const CommandParams& params) {
  auto element = locate::ResolveTargetElement(params);
  if (!element) return element.error();
  const bool by_mouse = params.Get("manual-click") == "True";
  return by_mouse ? ClickManually(element->Get()) : RunElementClickOnWorker(std::move(*element));
}

}  // namespace quillmate::dom
