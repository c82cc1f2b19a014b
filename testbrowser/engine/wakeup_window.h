// A message-only window by which another thread has something done on the UI thread.
#pragma once

#include <windows.h>
#include <atomic>
#include <functional>

namespace testbrowser::engine {

class WakeupWindow {
 public:
  /// @param action run on the thread that makes this object, from its message loop.
  explicit WakeupWindow(std::function<void()> action);
  ~WakeupWindow();
  WakeupWindow(const WakeupWindow&) = delete;
  WakeupWindow& operator=(const WakeupWindow&) = delete;

  /// From any thread. Wakes that come before the action has begun are one.
  void Wake();

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);

  std::function<void()> action_;
  std::atomic<bool> posted_ = false;
  HWND window_ = nullptr;
};

}  // namespace testbrowser::engine
