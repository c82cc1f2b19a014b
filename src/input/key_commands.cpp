#include "api/messages.h"
#include "commands.h"
#include "dom/element_keys.h"
#include "locate/element_search.h"

namespace quillmate {

Result SendKeys(Session& session, const CommandParams& params) {
  const auto target = Locator(params);
  if (!target) return target.error();
  const auto keys = TextValue(params);
  if (!keys) return keys.error();
  const auto element = FindElement(session, *target);
  // Deliberate: not the search's own message, which tells the step of a path.
  if (!element) return Fail(messages::kElementNotFound);
  const auto pressed = PressKeysOnElement(session, element->Get(), {*keys});
  return pressed ? Done() : Result(pressed.error());
}

/// Does nothing: hosts that collect actions end their chain with it.
Result ActionChains(Session&, const CommandParams&) { return Done(); }

}  // namespace quillmate
