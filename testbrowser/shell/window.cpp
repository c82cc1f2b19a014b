#include "shell/window.h"

#include <algorithm>
#include <stdexcept>

namespace testbrowser::shell {

Window::~Window() { Destroy(); }

void Window::Create(const Settings& settings) {
  EnsureClass(settings);
  const RECT& place = settings.place;
  hwnd_ = CreateWindowExW(settings.extended_style, settings.class_name, settings.text, settings.style,
                          place.left, place.top, place.right - place.left, place.bottom - place.top,
                          settings.parent, nullptr, GetModuleHandleW(nullptr), this);
  if (hwnd_ == nullptr) throw std::runtime_error("the system refused a window");
}

void Window::Destroy() {
  if (hwnd_ != nullptr) DestroyWindow(hwnd_);
}

void Window::EnsureClass(const Settings& settings) {
  WNDCLASSEXW found{};
  found.cbSize = sizeof found;
  // Asked for by our own module: the system's class of the same name (ReBarWindow32) is another one.
  if (GetClassInfoExW(GetModuleHandleW(nullptr), settings.class_name, &found) != 0 &&
      found.lpfnWndProc == &Window::Procedure) {
    return;
  }
  WNDCLASSEXW definition{};
  definition.cbSize = sizeof definition;
  definition.style = settings.class_style;
  definition.lpfnWndProc = &Window::Procedure;
  definition.hInstance = GetModuleHandleW(nullptr);
  definition.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  definition.hbrBackground = GetSysColorBrush(COLOR_WINDOW);
  definition.lpszClassName = settings.class_name;
  RegisterClassExW(&definition);
}

LRESULT CALLBACK Window::Procedure(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_NCCREATE) {
    auto* created = static_cast<Window*>(reinterpret_cast<CREATESTRUCTW*>(lparam)->lpCreateParams);
    SetWindowLongPtrW(hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(created));
    created->hwnd_ = hwnd;
  }
  auto* window = reinterpret_cast<Window*>(GetWindowLongPtrW(hwnd, GWLP_USERDATA));
  if (window == nullptr) return DefWindowProcW(hwnd, message, wparam, lparam);
  if (message == WM_NCDESTROY) {
    SetWindowLongPtrW(hwnd, GWLP_USERDATA, 0);
    window->hwnd_ = nullptr;
    return DefWindowProcW(hwnd, message, wparam, lparam);
  }
  return window->OnMessage(message, wparam, lparam);
}

LRESULT Window::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  return DefWindowProcW(hwnd_, message, wparam, lparam);
}

bool IsQuestion(UINT message) {
  constexpr UINT kFirstRegistered = 0xC000;
  constexpr UINT kQuestions[] = {WM_NULL, WM_GETTEXT, WM_GETTEXTLENGTH, WM_SETTEXT, WM_GETOBJECT, WM_COMMAND};
  const bool asks =
      message >= kFirstRegistered || std::ranges::find(kQuestions, message) != std::end(kQuestions);
  return asks && InSendMessage() != 0;
}

NestingWindow::NestingWindow(const wchar_t* class_name, HWND parent, const wchar_t* text) {
  Create({.class_name = class_name,
          .text = text,
          .style = WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | WS_CLIPSIBLINGS,
          .parent = parent});
}

void NestingWindow::MoveTo(const RECT& place) {
  SetWindowPos(hwnd(), nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
               SWP_NOZORDER | SWP_NOACTIVATE);
}

LRESULT NestingWindow::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_SIZE) {
    if (HWND child = GetWindow(hwnd(), GW_CHILD); child != nullptr) {
      SetWindowPos(child, nullptr, 0, 0, LOWORD(lparam), HIWORD(lparam), SWP_NOZORDER | SWP_NOACTIVATE);
    }
  }
  return Window::OnMessage(message, wparam, lparam);
}

RECT ClientRect(HWND window) {
  RECT rect{};
  GetClientRect(window, &rect);
  return rect;
}

std::wstring WindowText(HWND window) {
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
  text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
  return text;
}

}  // namespace testbrowser::shell
