#include "engine/wakeup_window.h"

namespace testbrowser::engine {
namespace {

constexpr wchar_t kClassName[] = L"TestBrowserWakeup";
constexpr UINT kWake = WM_APP;

void RegisterOnce(WNDPROC procedure) {
  static const ATOM registered = [procedure] {
    WNDCLASSW window_class{};
    window_class.lpfnWndProc = procedure;
    window_class.hInstance = GetModuleHandleW(nullptr);
    window_class.lpszClassName = kClassName;
    return RegisterClassW(&window_class);
  }();
  static_cast<void>(registered);
}

}  // namespace

WakeupWindow::WakeupWindow(std::function<void()> action) : action_(std::move(action)) {
  RegisterOnce(Procedure);
  window_ = CreateWindowW(kClassName, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, GetModuleHandleW(nullptr),
                          nullptr);
  SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

WakeupWindow::~WakeupWindow() { DestroyWindow(window_); }

void WakeupWindow::Wake() {
  if (!posted_.exchange(true)) PostMessageW(window_, kWake, 0, 0);
}

LRESULT CALLBACK WakeupWindow::Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  auto* self = reinterpret_cast<WakeupWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (message != kWake || self == nullptr) return DefWindowProcW(window, message, wparam, lparam);
  self->posted_ = false;  // before the action: what comes during it wakes again
  self->action_();
  return 0;
}

}  // namespace testbrowser::engine
