// Counts the calls that come to the UI thread's apartment from other processes, by interface and method, and
// refuses the n-th one when told to: what tests of round trips and of failures stand on. Steered by the
// registered window message "testbrowser call filter", sent to any "Internet Explorer_Server" window.
#pragma once

#include <windows.h>
#include <functional>
#include <optional>

namespace testbrowser::shell {

/// The steering message's wParam; lParam and result as said.
enum class FilterCommand : WPARAM {
  kReset = 0,       ///< all counts to 0, nothing is refused any more
  kTotal = 1,       ///< result: calls since the reset, without those of IRemUnknown
  kRejectNth = 2,   ///< lParam n ≥ 1: the n-th call from now on is refused; 0 forgets it
  kRejectFrom = 3,  ///< lParam n: so do all later ones
  kCount = 4,       ///< lParam: a global atom with the text "{IID}" or "{IID}:METHOD"; result: its calls
  kReport = 5,      ///< lParam: a global atom with a file's path; writes a line "{IID}:METHOD COUNT" for each
  kRejected = 6,    ///< result: calls refused since the reset
  kAnswer = 7       ///< lParam: how calls are refused from now on, a RefusalAnswer
};

/// Sent to the thread's top-level windows after a switch was set.
constexpr UINT kSwitchesChanged = WM_APP + 16;

class CallFilter {
 public:
  /// Filters the calling thread's apartment, one of the process at a time.
  CallFilter();
  ~CallFilter();
  CallFilter(const CallFilter&) = delete;
  CallFilter& operator=(const CallFilter&) = delete;

  /// While the function says so, every call is told to come again later (but COM's own).
  void RetryWhile(std::function<bool()> refuses);

  /// @return the answer when the message is the steering message.
  static std::optional<LRESULT> OnMessage(UINT message, WPARAM wparam, LPARAM lparam);
};

}  // namespace testbrowser::shell
