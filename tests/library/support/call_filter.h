// The test browser's own count of the calls that reach it, and its refusals.
#pragma once

#include <windows.h>

namespace quillmate::test {

class CallFilter {
 public:
  /// @param page any page window of the browser.
  explicit CallFilter(HWND page) : page_(page) {}
  void Reset() const { Send(0, 0); }
  LRESULT Calls() const { return Send(1, 0); }
  /// Refuses the call at a position from now on, counted from 1.
  void Refuse(int position) const { Send(2, position); }
  LRESULT Refused() const { return Send(6, 0); }

 private:
  LRESULT Send(WPARAM request, LPARAM argument) const {
    static const UINT message = RegisterWindowMessageW(L"testbrowser call filter");
    return SendMessageW(page_, message, request, argument);
  }
  HWND page_;
};

}  // namespace quillmate::test
