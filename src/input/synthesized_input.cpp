#include "input/synthesized_input.h"

#include <windows.h>
#include <chrono>
#include <cstdlib>
#include <ctime>
#include <ranges>

#include "com/process.h"
#include "input/key_sequence.h"
#include "input/mouse_path.h"

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

/// When the library last pressed the left button, in milliseconds of the system's running time. The system
/// has one pointer, and commands run one at a time.
ULONGLONG last_press = 0;

void SendButtons(DWORD flags) {
  if ((flags & MOUSEEVENTF_LEFTDOWN) != 0) last_press = GetTickCount64();
  mouse_event(flags, 0, 0, 0, 0);
}

/// Within the system's double-click time the next press would be taken together with the last one.
void AwaitNewClick() {
  constexpr ULONGLONG kClockStep = 16;
  const ULONGLONG over = last_press + GetDoubleClickTime() + kClockStep;
  const ULONGLONG now = GetTickCount64();
  if (last_press != 0 && now < over) com::Pause(std::chrono::milliseconds(over - now));
}

/// The real world of a movement: the system's clock, generator and pointer.
class SystemMouse final : public MouseWorld {
 public:
  unsigned Seconds() override { return static_cast<unsigned>(std::time(nullptr)); }
  void SeedRandom(unsigned seed) override { std::srand(seed); }
  int NextRandom() override { return std::rand(); }
  void Pause(std::chrono::milliseconds time) override { com::Pause(time); }

  void MoveTo(ScreenPoint point) override {
    const auto x = ToAbsoluteCoordinate(point.x, GetSystemMetrics(SM_CXSCREEN));
    const auto y = ToAbsoluteCoordinate(point.y, GetSystemMetrics(SM_CYSCREEN));
    mouse_event(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE, static_cast<DWORD>(x), static_cast<DWORD>(y), 0, 0);
  }
};

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

bool PlaceCursor(ScreenPoint point) { return SetCursorPos(point.x, point.y) != FALSE; }

void PressLeft() { SendButtons(MOUSEEVENTF_LEFTDOWN); }

void ReleaseLeft() { SendButtons(MOUSEEVENTF_LEFTUP); }

void ClickLeft() { SendButtons(MOUSEEVENTF_LEFTDOWN | MOUSEEVENTF_LEFTUP); }

void ClickLeftTwice() {
  AwaitNewClick();
  for (int click = 0; click < 2; ++click) {
    PressLeft();
    ReleaseLeft();
  }
}

void ClickRight() {
  SendButtons(MOUSEEVENTF_RIGHTDOWN);
  SendButtons(MOUSEEVENTF_RIGHTUP);
}

bool HumanMouseMove(ScreenPoint end) {
  POINT start{};
  GetCursorPos(&start);
  SystemMouse mouse;
  FollowMousePath({static_cast<int>(start.x), static_cast<int>(start.y)}, end, mouse);
  return true;
}

bool SendKeySequence(std::string_view sequence) {
  std::vector<BYTE> pressed;
  for (const KeyToken& token : SplitKeySequence(ToUpperAscii(sequence))) {
    const auto code = FindKey(token);
    if (!code) return false;
    // Deliberate: no scan code and no extended-key flag, even for arrows and the right-hand modifiers.
    keybd_event(*code, 0, 0, 0);
    pressed.push_back(*code);
  }
  for (const BYTE code : pressed | std::views::reverse) keybd_event(code, 0, KEYEVENTF_KEYUP, 0);
  return true;
}

}  // namespace quillmate
