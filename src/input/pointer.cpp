// The pointer over mouse_event.
#include "input/pointer.h"

#include <windows.h>
#include <cstdlib>
#include <ctime>

#include "com/poll.h"
#include "input/mouse_path.h"

namespace quillmate {
namespace {

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

}  // namespace quillmate
