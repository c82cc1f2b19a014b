// Tab, Enter and Esc in our modeless dialogs, whichever loop happens to fetch the messages: this program's,
// the engine's while it waits, or COM's.
#pragma once

#include <windows.h>

namespace testbrowser::shell {

class DialogKeys {
 public:
  /// From now on the dialog gets its keyboard interface on the calling thread.
  static void Watch(HWND dialog);
  static void Forget(HWND dialog);
};

}  // namespace testbrowser::shell
