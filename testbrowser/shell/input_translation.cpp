#include "shell/input_translation.h"

#include <windowsx.h>
#include <iterator>

namespace testbrowser::shell {
namespace {

using engine::MouseButton;
using Type = engine::MouseInput::Type;

bool IsHeld(int virtual_key) { return GetKeyState(virtual_key) < 0; }

unsigned HeldModifiers() {
  unsigned modifiers = 0;
  if (IsHeld(VK_MENU)) modifiers |= engine::kAlt;
  if (IsHeld(VK_CONTROL)) modifiers |= engine::kCtrl;
  if (IsHeld(VK_SHIFT)) modifiers |= engine::kShift;
  if (IsHeld(VK_LWIN) || IsHeld(VK_RWIN)) modifiers |= engine::kMeta;
  return modifiers;
}

unsigned HeldButtons(WPARAM keys) {
  unsigned held = 0;
  if ((keys & MK_LBUTTON) != 0) held |= engine::kLeftHeld;
  if ((keys & MK_RBUTTON) != 0) held |= engine::kRightHeld;
  if ((keys & MK_MBUTTON) != 0) held |= engine::kMiddleHeld;
  return held;
}

struct MouseMessage {
  UINT message;
  Type type;
  MouseButton button;
  bool second_click;
};

constexpr MouseMessage kMouseMessages[] = {
    {WM_MOUSEMOVE, Type::kMove, MouseButton::kNone, false},
    {WM_LBUTTONDOWN, Type::kPress, MouseButton::kLeft, false},
    {WM_LBUTTONDBLCLK, Type::kPress, MouseButton::kLeft, true},
    {WM_LBUTTONUP, Type::kRelease, MouseButton::kLeft, false},
    {WM_RBUTTONDOWN, Type::kPress, MouseButton::kRight, false},
    {WM_RBUTTONDBLCLK, Type::kPress, MouseButton::kRight, true},
    {WM_RBUTTONUP, Type::kRelease, MouseButton::kRight, false},
    {WM_MBUTTONDOWN, Type::kPress, MouseButton::kMiddle, false},
    {WM_MBUTTONDBLCLK, Type::kPress, MouseButton::kMiddle, true},
    {WM_MBUTTONUP, Type::kRelease, MouseButton::kMiddle, false},
};

/// The characters that TranslateMessage made of the press being handled, taken from the queue.
std::wstring TakeQueuedText(HWND window) {
  std::wstring text;
  MSG queued{};
  while (PeekMessageW(&queued, window, WM_CHAR, WM_DEADCHAR, PM_REMOVE) != 0 ||
         PeekMessageW(&queued, window, WM_SYSCHAR, WM_SYSDEADCHAR, PM_REMOVE) != 0) {
    if (queued.message == WM_CHAR) text.push_back(static_cast<wchar_t>(queued.wParam));
  }
  return text;
}

}  // namespace

std::optional<engine::MouseInput> ToMouseInput(UINT message, WPARAM wparam, LPARAM lparam) {
  for (const MouseMessage& known : kMouseMessages) {
    if (known.message != message) continue;
    engine::MouseInput input;
    input.type = known.type;
    input.x = GET_X_LPARAM(lparam);
    input.y = GET_Y_LPARAM(lparam);
    input.button = known.button;
    input.held = HeldButtons(wparam);
    input.clicks = known.type == Type::kMove ? 0 : (known.second_click ? 2 : 1);
    input.modifiers = HeldModifiers();
    return input;
  }
  return std::nullopt;
}

std::vector<POINT> MergedMoves(HWND window, DWORD since) {
  const DWORD place = GetMessagePos();
  MOUSEMOVEPOINT here{};
  here.x = GET_X_LPARAM(place);
  here.y = GET_Y_LPARAM(place);
  here.time = static_cast<DWORD>(GetMessageTime());
  MOUSEMOVEPOINT history[64];
  const int count = GetMouseMovePointsEx(sizeof here, &here, history, static_cast<int>(std::size(history)),
                                         GMMP_USE_DISPLAY_POINTS);
  std::vector<POINT> merged;
  // The first is the message's own, then back in time.
  for (int i = 1; i < count && history[i].time > since; ++i) {
    POINT point{history[i].x, history[i].y};
    ScreenToClient(window, &point);
    merged.insert(merged.begin(), point);
  }
  return merged;
}

engine::WheelInput ToWheelInput(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  POINT point{GET_X_LPARAM(lparam), GET_Y_LPARAM(lparam)};  // on the screen, unlike the other mouse messages'
  ScreenToClient(window, &point);
  engine::WheelInput input;
  input.x = point.x;
  input.y = point.y;
  (message == WM_MOUSEHWHEEL ? input.delta_x : input.delta_y) = GET_WHEEL_DELTA_WPARAM(wparam);
  input.modifiers = HeldModifiers();
  return input;
}

engine::KeyInput ToKeyInput(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  constexpr LPARAM kExtended = 1 << 24;
  constexpr LPARAM kWasDown = 1 << 30;
  engine::KeyInput input;
  input.down = message == WM_KEYDOWN || message == WM_SYSKEYDOWN;
  input.virtual_key = static_cast<unsigned>(wparam);
  input.scan_code = static_cast<unsigned>(lparam >> 16) & 0xFF;
  input.extended = (lparam & kExtended) != 0;
  input.repeat = input.down && (lparam & kWasDown) != 0;
  input.modifiers = HeldModifiers();
  if (input.down) {
    std::wstring text = TakeQueuedText(window);
    if ((input.modifiers & (engine::kCtrl | engine::kAlt)) == 0) input.text = std::move(text);
  }
  return input;
}

}  // namespace testbrowser::shell
