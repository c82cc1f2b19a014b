// The native boxes of a page's alert, confirm and prompt: dialogs of class "#32770" owned by the browser's
// frame, which is disabled meanwhile. They are modeless inside, so that calls from outside go on being
// answered. And the dialog in which the user chooses files for a page.
#pragma once

#include <windows.h>
#include <functional>
#include <string>
#include <vector>

#include "engine/page_listener.h"
#include "shell/top_level_window.h"

namespace testbrowser::shell {

/// Lets the user choose a file, or several, in the system's own dialog, which handles messages until it is closed.
/// @return their paths in UTF-8; none when the user chose nothing.
std::vector<std::string> ChooseFiles(HWND owner, bool several);

class NativeBox {
 public:
  /// Shows the box. `answer` is called once, when a person or a program presses a button; not when the box is
  /// destroyed unanswered.
  NativeBox(TopLevelWindow& owner, const engine::ScriptBox& box,
            std::function<void(engine::BoxAnswer)> answer);
  ~NativeBox();
  NativeBox(const NativeBox&) = delete;
  NativeBox& operator=(const NativeBox&) = delete;

  HWND hwnd() const { return dialog_; }

 private:
  static INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam);
  void OnButton(int id);

  engine::ScriptBox::Kind kind_;
  std::function<void(engine::BoxAnswer)> answer_;
  HWND dialog_ = nullptr;
  WindowBlock block_;
};

}  // namespace testbrowser::shell
