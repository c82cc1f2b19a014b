// The test browser's count of the calls that reach it, and its refusals.
#pragma once

#include <windows.h>

#include "support/under_test.h"

namespace quillmate::test {

/// Steers the filter of the browser that shows a page. The requests are those of the browser's
/// shell/call_filter.h.
class CallFilter {
 public:
  explicit CallFilter(HWND page) : page_(page) {
    TestBrowserOnly("counts or refuses calls inside the browser");
  }
  /// Begins to count anew and refuses nothing.
  void Reset() const { Send(0, 0); }
  /// Calls since the reset; releases and COM's own calls are left out.
  LRESULT Calls() const { return Send(1, 0); }
  /// Refuses the call at a position from now on, counted from 1.
  void Refuse(int position) const { Send(2, position); }
  /// Refuses that call and every later one.
  void RefuseFrom(int position) const { Send(3, position); }
  /// How calls are refused from now on, until the next reset. All but kRejected come from the object that is asked,
  /// so COM's own calls for more interfaces are not refused by them.
  enum class Answer {
    kRejected = 0,      ///< RPC_E_CALL_REJECTED
    kRetryLater = 1,    ///< RPC_E_SERVERCALL_RETRYLATER
    kDisconnected = 2,  ///< RPC_E_DISCONNECTED
    kNull = 3           ///< success and no object where one is asked for; other calls are answered
  };
  void SetAnswer(Answer answer) const { Send(7, static_cast<LPARAM>(answer)); }
  /// How many calls were refused since the reset.
  LRESULT Refused() const { return Send(6, 0); }

 private:
  LRESULT Send(WPARAM request, LPARAM argument) const {
    static const UINT message = RegisterWindowMessageW(L"testbrowser call filter");
    return SendMessageW(page_, message, request, argument);
  }

  HWND page_;
};

}  // namespace quillmate::test
