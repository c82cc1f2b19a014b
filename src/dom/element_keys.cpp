#include "dom/element_keys.h"

#include <chrono>
#include <utility>

#include "api/messages.h"
#include "com/call_limit.h"
#include "com/owned.h"
#include "com/worker.h"
#include "input/synthesized_input.h"
#include "locate/current_page.h"
#include "session/windows.h"

namespace quillmate {
namespace {

/// Longer than a page's focus handlers take, unless one of them never ends.
constexpr std::chrono::seconds kFocusWait(3);

/// The page's focus handlers run after focus() has returned, when the page's thread next takes messages. A
/// further call comes behind them; from inside a box that one of them shows it is answered as well.
/// @return false when no answer comes, or the page has not had the call: the keys would pile up, or reach
/// whatever else has the focus. A page that had the call may refuse the focus.
bool GiveFocus(com::ComPtr<IHTMLElement2> element) {
  const auto focus = [](IHTMLElement2* focused) {
    if (focused == nullptr) return RPC_E_FAULT;
    const HRESULT given = focused->focus();
    LONG ignored = 0;
    if (SUCCEEDED(given)) focused->get_clientLeft(&ignored);
    return given;
  };
  const auto result = com::CallOnWorker(std::move(element), kFocusWait, focus);
  return result && !com::FailedInTransit(*result);
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
