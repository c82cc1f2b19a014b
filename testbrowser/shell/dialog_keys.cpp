#include "shell/dialog_keys.h"

#include <vector>

namespace testbrowser::shell {
namespace {

std::vector<HWND>& Watched() {
  static std::vector<HWND> dialogs;
  return dialogs;
}

LRESULT CALLBACK OnFetched(int code, WPARAM wparam, LPARAM lparam) {
  auto* message = reinterpret_cast<MSG*>(lparam);
  if (code == HC_ACTION && wparam == PM_REMOVE && message->message >= WM_KEYFIRST &&
      message->message <= WM_KEYLAST) {
    for (HWND dialog : Watched()) {
      if (IsDialogMessageW(dialog, message) == 0) continue;
      message->message = WM_NULL;  // handled: whoever fetched it finds nothing to do
      break;
    }
  }
  return CallNextHookEx(nullptr, code, wparam, lparam);
}

}  // namespace

void DialogKeys::Watch(HWND dialog) {
  static const HHOOK hook = SetWindowsHookExW(WH_GETMESSAGE, &OnFetched, nullptr, GetCurrentThreadId());
  if (hook != nullptr) Watched().push_back(dialog);
}

void DialogKeys::Forget(HWND dialog) { std::erase(Watched(), dialog); }

}  // namespace testbrowser::shell
