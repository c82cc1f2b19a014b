#include "shell/server_window.h"

#include "dom/unknown_answers.h"
#include "shell/call_filter.h"
#include "shell/input_translation.h"

namespace testbrowser::shell {
namespace {

UINT GetObjectMessage() {
  static const UINT message = RegisterWindowMessageW(L"WM_HTML_GETOBJECT");
  return message;
}

bool IsKeyMessage(UINT message) {
  return message == WM_KEYDOWN || message == WM_KEYUP || message == WM_SYSKEYDOWN || message == WM_SYSKEYUP;
}

/// Alt+F4 is the system's.
bool IsCloseKey(UINT message, WPARAM wparam) {
  return (message == WM_SYSKEYDOWN || message == WM_SYSKEYUP) && wparam == VK_F4;
}

}  // namespace

ServerWindow::ServerWindow(HWND parent, std::shared_ptr<engine::Page> page, Owner& owner)
    : page_(std::move(page)), owner_(owner) {
  Create({.class_name = L"Internet Explorer_Server",
          .style = WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS,
          .parent = parent,
          .place = ClientRect(parent),
          .class_style = CS_DBLCLKS});
}

void ServerWindow::ReportPlace() {
  if (hwnd() == nullptr) return;
  const RECT client = ClientRect(hwnd());
  POINT origin{};
  ClientToScreen(hwnd(), &origin);
  const RECT place{origin.x, origin.y, client.right, client.bottom};
  if (client.right > 0 && client.bottom > 0 && EqualRect(&place, &reported_) == 0) {
    reported_ = place;
    page_->SetViewport(client.right, client.bottom, origin.x, origin.y);
  }
  const bool shown = IsWindowVisible(hwnd()) != 0;
  if (shown != was_shown_) page_->SetPainting(was_shown_ = shown);
}

void ServerWindow::Repaint() {
  if (hwnd() != nullptr) InvalidateRect(hwnd(), nullptr, FALSE);
}

LRESULT ServerWindow::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  if (const auto answer = CallFilter::OnMessage(message, wparam, lparam)) return *answer;
  if (const auto answer = dom::OnAnswerMessage(message, wparam)) return *answer;
  // Scripts run on the window's thread: while one does, the window does not answer.
  if (IsQuestion(message)) page_->AwaitScripts();
  if (message == GetObjectMessage()) return owner_.DocumentResult(wparam);
  if (OnInput(message, wparam, lparam)) return 0;
  switch (message) {
    case WM_SIZE:
      ReportPlace();
      break;
    case WM_PAINT:
      Paint();
      return 0;
    case WM_ERASEBKGND:
      return 1;
    case WM_GETDLGCODE:
      return DLGC_WANTALLKEYS;
    case WM_MOUSEACTIVATE:
      SetFocus(hwnd());
      return MA_ACTIVATE;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
      page_->SetFocus(message == WM_SETFOCUS);
      return 0;
    default:
      break;
  }
  return Window::OnMessage(message, wparam, lparam);
}

bool ServerWindow::OnInput(UINT message, WPARAM wparam, LPARAM lparam) {
  if (IsKeyMessage(message)) return OnKey(message, wparam, lparam);
  if (message == WM_MOUSEWHEEL || message == WM_MOUSEHWHEEL) {
    page_->Wheel(ToWheelInput(hwnd(), message, wparam, lparam));
    return true;
  }
  if (const auto mouse = ToMouseInput(message, wparam, lparam)) {
    OnMouse(*mouse);
    return true;
  }
  return false;
}

void ServerWindow::OnMouse(engine::MouseInput input) {
  using Type = engine::MouseInput::Type;
  // The second release of a double click is a plain WM_LBUTTONUP: its press says that it is the second.
  if (input.type == Type::kPress) clicks_of_press_ = input.clicks;
  if (input.type == Type::kRelease) input.clicks = clicks_of_press_;
  // Held buttons keep the mouse, so that a drag that leaves the window still ends in it.
  if (input.type == Type::kPress) SetCapture(hwnd());
  // A drag whose path is cut short ends elsewhere; the real browser is seldom so far behind its pointer.
  if (input.type == Type::kMove && input.held != 0) {
    engine::MouseInput missed = input;
    for (const POINT point : MergedMoves(hwnd(), mouse_time_)) {
      missed.x = point.x;
      missed.y = point.y;
      page_->Mouse(missed);
    }
  }
  mouse_time_ = static_cast<DWORD>(GetMessageTime());
  page_->Mouse(input);
  if (input.type == Type::kRelease && input.held == 0 && GetCapture() == hwnd()) ReleaseCapture();
}

bool ServerWindow::OnKey(UINT message, WPARAM wparam, LPARAM lparam) {
  if (IsCloseKey(message, wparam) && GetKeyState(VK_CONTROL) >= 0) return false;
  const engine::KeyInput key = ToKeyInput(hwnd(), message, wparam, lparam);
  // The release of a key goes where its press went.
  if (key.down) kept_keys_[key.virtual_key & 0xFF] = owner_.HandleShortcut(key);
  if (!kept_keys_[key.virtual_key & 0xFF]) page_->Key(key);
  return true;
}

void ServerWindow::Paint() {
  PAINTSTRUCT paint{};
  HDC target = BeginPaint(hwnd(), &paint);
  const RECT client = ClientRect(hwnd());
  const auto picture = page_->LatestPicture();
  if (picture != nullptr) {
    picture->Paint(target, 0, 0);
    ExcludeClipRect(target, 0, 0, picture->width(), picture->height());
  }
  FillRect(target, &client, GetSysColorBrush(COLOR_WINDOW));
  EndPaint(hwnd(), &paint);
}

}  // namespace testbrowser::shell
