#include <utility>

#include "api/messages.h"
#include "commands.h"
#include "dom/worker_calls.h"
#include "input/synthesized_input.h"
#include "locate/current_page.h"
#include "locate/geometry.h"

namespace quillmate {
namespace {

/// Brings the element's page to the top and clicks the element's center with the system's pointer.
Result ClickManually(Session& session, IHTMLElement* element) {
  const auto point = GetElementClickPoint(session, element);
  if (!point) return point.error();
  // Deliberate: the double click's message, though this is a single click.
  if (!PlaceCursor(*point)) return Fail(messages::kDoubleClickFailed);
  ClickLeft();
  AwaitMouseTaken();
  return Done();
}

Result ClickByMethod(Session& session, com::ComPtr<IHTMLElement> element) {
  const auto outcome = ClickElementOnWorker(session, std::move(element));
  if (!outcome) return outcome.error();
  // Deliberate: a click that has not returned is a success. The page received it and shows a dialog that the
  // host can now answer.
  return *outcome == ClickOutcome::kReturned ? Text({}) : Number(0);
}

}  // namespace

Result Click(Session& session, const CommandParams& params) {
  auto element = ResolveTargetElement(session, params);
  if (!element) return element.error();
  const bool by_mouse = params.Get("manual-click") == "True";
  return by_mouse ? ClickManually(session, element->Get()) : ClickByMethod(session, std::move(*element));
}

}  // namespace quillmate
