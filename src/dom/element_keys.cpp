#include "dom/element_keys.h"

#include <chrono>
#include <utility>

#include "api/messages.h"
#include "com/com_ptr.h"
#include "com/worker.h"
#include "input/send_keys.h"
#include "session/current_page.h"
#include "session/windows.h"

namespace quillmate {
namespace {

/// The page's own focus handlers run inside the call. Longer than they take, unless one of them shows a
/// dialog.
constexpr std::chrono::seconds kFocusWait(3);

/// @return false when the call has not come back: the keys would go to the page's dialog, or pile up.
bool GiveFocus(com::ComPtr<IHTMLElement2> element) {
  const auto focus = [](IHTMLElement2* focused) { return focused != nullptr ? focused->focus() : E_FAIL; };
  return com::CallOnWorker(std::move(element), kFocusWait, focus).has_value();
}

}  // namespace

OrFailure<void> PressKeysOnElement(Session& session, IHTMLElement* element,
                                   std::initializer_list<std::string_view> sequences) {
  auto focusable = com::Query<IHTMLElement2>(element);
  if (focusable == nullptr || !IsTargetUsable(session)) return Failed(messages::kElementNotFound);
  WindowHolder* holder = session.ValidHolder();
  if (holder == nullptr || !holder->BringToTop()) return Failed(messages::kSwitchTabFailed);
  BringWindowToFront(holder->GetWindowHandle());
  if (!GiveFocus(std::move(focusable))) return Failed(messages::kSendKeysFailed);
  for (const std::string_view sequence : sequences) {
    if (!SendKeySequence(sequence)) return Failed(messages::kSendKeysFailed);
  }
  return {};
}

}  // namespace quillmate
