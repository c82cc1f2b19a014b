// Activation, focus, keys.
#include "input/element_keys.h"

#include "api/messages.h"
#include "input/send_keys.h"
#include "locate/frames.h"
#include "session/bring_to_front.h"
#include "session/current_target.h"

namespace quillmate::input {

using api::Failure;
namespace messages = api::messages;

std::optional<Failure> SendKeysToElement(IHTMLElement2* element,
                                         std::initializer_list<std::string_view> sequences) {
  if (element == nullptr || !locate::IsTargetUsable()) return Failure{messages::kElementNotFound};
  session::WindowHolder* holder = session::ValidHolder();
  if (holder == nullptr || !holder->BringToTop()) return Failure{messages::kSwitchTabFailed};
  session::BringWindowToFront(holder->GetWindowHandle());
  element->focus();
  for (const std::string_view sequence : sequences) {
    if (!SendKeySequence(sequence)) return Failure{messages::kSendKeysFailed};
  }
  return std::nullopt;
}

}  // namespace quillmate::input
