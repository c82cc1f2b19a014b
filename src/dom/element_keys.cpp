#include "dom/element_keys.h"

#include <chrono>
#include <utility>

#include "api/messages.h"
#include "com/com_ptr.h"
#include "com/worker.h"
#include "input/input_taken.h"
#include "input/send_keys.h"
#include "session/current_page.h"
#include "session/windows.h"

namespace quillmate {
namespace {

/// Longer than a page's focus handlers take, unless one of them never ends.
constexpr std::chrono::seconds kFocusWait(3);

/// The page's focus handlers run after focus() has returned, when the page's thread next takes messages. A
/// further call comes behind them; from inside a box that one of them shows it is answered as well.
/// @return false when no answer comes: the keys would pile up.
bool GiveFocus(com::ComPtr<IHTMLElement2> element) {
  const auto focus = [](IHTMLElement2* focused) {
    LONG ignored = 0;
    if (focused == nullptr || FAILED(focused->focus())) return E_FAIL;
    return focused->get_clientLeft(&ignored);
  };
  return com::CallOnWorker(std::move(element), kFocusWait, focus).has_value();
}

/// A box or dialog disables the window that it belongs to, and takes the keys.
bool IsBehindDialog(HWND window) { return window != nullptr && !IsWindowEnabled(window); }

}  // namespace

OrFailure<void> PressKeysOnElement(Session& session, IHTMLElement* element,
                                   std::initializer_list<std::string_view> sequences) {
  auto focusable = com::Query<IHTMLElement2>(element);
  if (focusable == nullptr || !IsTargetUsable(session)) return Failed(messages::kElementNotFound);
  WindowHolder* holder = session.ValidHolder();
  if (holder == nullptr || !holder->BringToTop()) return Failed(messages::kSwitchTabFailed);
  BringWindowToFront(holder->GetWindowHandle());
  if (!GiveFocus(std::move(focusable)) || IsBehindDialog(holder->GetWindowHandle())) {
    return Failed(messages::kSendKeysFailed);
  }
  for (const std::string_view sequence : sequences) {
    if (!SendKeySequence(sequence)) return Failed(messages::kSendKeysFailed);
  }
  AwaitKeysTaken();
  return {};
}

}  // namespace quillmate
