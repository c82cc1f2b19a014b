// The manual road of the click command.
#include "dom/manual_click.h"

#include "api/messages.h"
#include "input/pointer.h"
#include "locate/geometry.h"

namespace quillmate::dom {

api::Result ClickManually(IHTMLElement* element) {
  const auto point = locate::GetElementClickPoint(element);
  if (!point) return point.error();
  // The double click's message is the wanted one here, though this is a single click.
  if (!input::PlaceCursor(*point)) return api::Fail(api::messages::kDoubleClickFailed);
  input::ClickLeft();
  return api::Done();
}

}  // namespace quillmate::dom
