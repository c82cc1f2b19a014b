// Activation, focus, keys.
#include "input/element_keys.h"

#include <chrono>

#include "api/messages.h"
#include "com/com_ptr.h"
#include "com/worker.h"
#include "input/send_keys.h"
#include "locate/frames.h"
#include "session/bring_to_front.h"
#include "session/current_target.h"

namespace quillmate::input {

using api::Failure;
namespace messages = api::messages;

namespace {

/// The page's own focus handlers run inside the call. Longer than they take, unless one of them shows a
/// dialog.
constexpr std::chrono::seconds kFocusWait(3);

/// @return false when the call has not come back: the keys would go to the page's dialog, or pile up.
bool GiveFocus(IHTMLElement2* element) {
  const auto focus = [](IHTMLElement2* focused) { return focused != nullptr ? focused->focus() : E_FAIL; };
  return com::CallOnWorker(com::ComPtr<IHTMLElement2>(element), kFocusWait, focus).has_value();
}

}  // namespace

std::optional<Failure> SendKeysToElement(IHTMLElement2* element,
                                         std::initializer_list<std::string_view> sequences) {
  if (element == nullptr || !locate::IsTargetUsable()) return Failure{messages::kElementNotFound};
  session::WindowHolder* holder = session::ValidHolder();
  if (holder == nullptr || !holder->BringToTop()) return Failure{messages::kSwitchTabFailed};
  session::BringWindowToFront(holder->GetWindowHandle());
  if (!GiveFocus(element)) return Failure{messages::kSendKeysFailed};
  for (const std::string_view sequence : sequences) {
    if (!SendKeySequence(sequence)) return Failure{messages::kSendKeysFailed};
  }
  return std::nullopt;
}

}  // namespace quillmate::input
