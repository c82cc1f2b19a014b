// A window that can own message boxes and modal dialogs: it is disabled while it owns any.
#pragma once

#include <utility>

#include "shell/window.h"

namespace testbrowser::shell {

class TopLevelWindow : public Window {
 public:
  void Block() {
    if (++blockers_ == 1 && hwnd() != nullptr) EnableWindow(hwnd(), FALSE);
  }
  /// Enables the window again when nothing else blocks it: before the blocking window goes, so that the
  /// system activates this one next and no stranger.
  void Unblock() {
    if (--blockers_ == 0 && hwnd() != nullptr) EnableWindow(hwnd(), TRUE);
  }

 private:
  int blockers_ = 0;
};

/// Blocks a window until End, or for as long as it lives. The window outlives it.
class WindowBlock {
 public:
  explicit WindowBlock(TopLevelWindow& window) : window_(&window) { window.Block(); }
  ~WindowBlock() { End(); }
  WindowBlock(const WindowBlock&) = delete;
  WindowBlock& operator=(const WindowBlock&) = delete;
  void End() {
    if (TopLevelWindow* window = std::exchange(window_, nullptr)) window->Unblock();
  }

 private:
  TopLevelWindow* window_;
};

}  // namespace testbrowser::shell
