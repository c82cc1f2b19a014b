#include "session/windows.h"

#include <cwchar>
#include <iterator>

namespace quillmate {
namespace {

/// The thread whose input state is to be shared. None, when it takes no messages: SetForegroundWindow would
/// wait for it as long as it hangs.
DWORD ForegroundThread() {
  HWND foreground = GetForegroundWindow();
  return AnswersInTime(foreground) ? GetWindowThreadProcessId(foreground, nullptr) : 0;
}

/// Shares the input state of the foreground window's thread, which lets this thread hand the foreground on.
class ForegroundInput {
 public:
  ForegroundInput() : own_(GetCurrentThreadId()), foreground_(ForegroundThread()) {
    if (foreground_ != 0) AttachThreadInput(own_, foreground_, TRUE);
  }
  ForegroundInput(const ForegroundInput&) = delete;
  ForegroundInput& operator=(const ForegroundInput&) = delete;
  ~ForegroundInput() {
    if (foreground_ != 0) AttachThreadInput(own_, foreground_, FALSE);
  }

 private:
  DWORD own_;
  DWORD foreground_;
};

/// A window's list of children, or of top-level windows, in Z order. Taken before any of them is looked at: a
/// window that vanishes meanwhile would end a walk from one to the next.
std::vector<HWND> ChildrenOf(HWND parent) {
  std::vector<HWND> children;
  for (HWND child = GetWindow(parent, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
    children.push_back(child);
  }
  return children;
}

}  // namespace

bool SendMessageInTime(HWND window, UINT message, LPARAM parameter, DWORD_PTR* result,
                       std::chrono::milliseconds limit) {
  DWORD_PTR ignored = 0;
  return SendMessageTimeoutA(window, message, 0, parameter, SMTO_ABORTIFHUNG,
                             static_cast<UINT>(limit.count()), result != nullptr ? result : &ignored) != 0;
}

bool AnswersInTime(HWND window) { return SendMessageInTime(window, WM_NULL); }

Response AskWindow(HWND window, std::chrono::milliseconds limit) {
  const UINT flags = limit > kMessageLimit ? SMTO_NORMAL : SMTO_ABORTIFHUNG;
  DWORD_PTR ignored = 0;
  if (SendMessageTimeoutW(window, WM_NULL, 0, 0, flags, static_cast<UINT>(limit.count()), &ignored) != 0) {
    return Response::kAnswers;
  }
  return IsWindow(window) ? Response::kSilent : Response::kGone;
}

std::wstring ReadWindowText(HWND window) {
  wchar_t text[500] = L"";
  const int length = InternalGetWindowText(window, text, static_cast<int>(std::size(text)));
  return {text, static_cast<size_t>(length)};
}

bool IsWindowOfClass(HWND window, const wchar_t* class_name) {
  wchar_t name[500] = L"";
  return GetClassNameW(window, name, static_cast<int>(std::size(name))) > 0 &&
         std::wcscmp(name, class_name) == 0;
}

std::vector<HWND> ChildrenOfClass(HWND parent, const wchar_t* class_name) {
  std::vector<HWND> children = ChildrenOf(parent);
  std::erase_if(children, [&](HWND child) { return !IsWindowOfClass(child, class_name); });
  return children;
}

std::vector<HWND> TopLevelWindows() { return ChildrenOf(GetDesktopWindow()); }

HWND FindDescendantOfClass(HWND parent, const wchar_t* class_name) {
  // The desktop's descendants are not meant.
  if (parent == nullptr) return nullptr;
  for (HWND child : ChildrenOf(parent)) {
    if (IsWindowOfClass(child, class_name)) return child;
    if (HWND found = FindDescendantOfClass(child, class_name)) return found;
  }
  return nullptr;
}

HWND FindAncestorOfClass(HWND window, const wchar_t* class_name) {
  while (window != nullptr && !IsWindowOfClass(window, class_name)) {
    HWND parent = GetParent(window);
    window = parent != window ? parent : nullptr;
  }
  return window;
}

bool BringWindowToFront(HWND window) {
  window = GetAncestor(window, GA_ROOT);
  // ShowWindow on a hung window would block this thread.
  if (!AnswersInTime(window)) return false;
  constexpr UINT kKeepPlace = SWP_NOSIZE | SWP_NOMOVE | SWP_SHOWWINDOW;
  ShowWindow(window, SW_SHOW);
  if (IsIconic(window)) ShowWindow(window, SW_RESTORE);
  {
    const ForegroundInput attached;
    SetWindowPos(window, HWND_TOPMOST, 0, 0, 0, 0, kKeepPlace);
    SetWindowPos(window, HWND_NOTOPMOST, 0, 0, 0, 0, kKeepPlace);
    // Deliberate: always maximised. Element positions recorded by a robot assume it.
    ShowWindow(window, SW_MAXIMIZE);
    SetForegroundWindow(window);
  }
  UpdateWindow(window);
  SetActiveWindow(window);
  SetFocus(window);
  return true;
}

}  // namespace quillmate
