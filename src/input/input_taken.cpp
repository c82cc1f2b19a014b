#include "input/input_taken.h"

#include <windows.h>
#include <chrono>

#include "com/poll.h"

namespace quillmate {
namespace {

constexpr int kRounds = 100;
constexpr std::chrono::milliseconds kInterval(5);

bool IsPainted(HWND window) { return !GetUpdateRect(window, nullptr, FALSE); }

/// A thread's queue gives out WM_PAINT only when nothing else is in it (Microsoft's documentation page
/// gdi/wm-paint), so a window that has painted a pixel made invalid after the input has taken that input and
/// handled it. The status of the queue itself can be asked by its own thread alone (winuser
/// GetQueueStatus), also while the two threads share their input state.
void AwaitPaint(HWND window) {
  const RECT pixel{0, 0, 1, 1};
  if (window == nullptr || !IsWindowVisible(window) || !InvalidateRect(window, &pixel, FALSE)) return;
  com::PollUntil(kRounds, kInterval, [window] { return IsPainted(window); });
}

}  // namespace

void AwaitMouseTaken() {
  POINT cursor{};
  if (GetCursorPos(&cursor)) AwaitPaint(WindowFromPoint(cursor));
}

void AwaitKeysTaken() {
  GUITHREADINFO foreground{};
  foreground.cbSize = sizeof foreground;
  if (GetGUIThreadInfo(0, &foreground)) AwaitPaint(foreground.hwndFocus);
}

}  // namespace quillmate
