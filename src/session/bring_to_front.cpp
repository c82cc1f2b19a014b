// The foreground sequence.
#include "session/bring_to_front.h"

#include "session/answering.h"

namespace quillmate::session {
namespace {

/// Shares the input state of the foreground window's thread, which lets this thread hand the foreground on.
class ForegroundInput {
 public:
  ForegroundInput()
      : own_(GetCurrentThreadId()), foreground_(GetWindowThreadProcessId(GetForegroundWindow(), nullptr)) {
    AttachThreadInput(own_, foreground_, TRUE);
  }
  ForegroundInput(const ForegroundInput&) = delete;
  ForegroundInput& operator=(const ForegroundInput&) = delete;
  ~ForegroundInput() { AttachThreadInput(own_, foreground_, FALSE); }

 private:
  DWORD own_;
  DWORD foreground_;
};

}  // namespace

bool BringWindowToFront(HWND window) {
  // Shown, it would keep the caller waiting for as long as it hangs.
  if (!AnswersInTime(window)) return false;
  constexpr UINT kKeepPlace = SWP_NOSIZE | SWP_NOMOVE | SWP_SHOWWINDOW;
  ShowWindow(window, SW_SHOW);
  if (IsIconic(window)) ShowWindow(window, SW_RESTORE);
  {
    const ForegroundInput attached;
    SetWindowPos(window, HWND_TOPMOST, 0, 0, 0, 0, kKeepPlace);
    SetWindowPos(window, HWND_NOTOPMOST, 0, 0, 0, 0, kKeepPlace);
    // Always maximised, on purpose: element positions recorded by a robot assume it.
    ShowWindow(window, SW_MAXIMIZE);
    SetForegroundWindow(window);
  }
  UpdateWindow(window);
  SetActiveWindow(window);
  SetFocus(window);
  return true;
}

}  // namespace quillmate::session
