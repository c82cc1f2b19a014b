#include "session/windows.h"

#include <cwchar>
#include <iterator>

namespace quillmate {
namespace {

/// Shares the input state of the foreground window's thread, which lets this thread hand the foreground on.
class ForegroundInput {
 public:
  ForegroundInput()
      : own_(GetCurrentThreadId()), foreground_(GetWindowThreadProcessId(GetForegroundWindow(), nullptr)) {
    AttachThreadInput(own_, foreground_, TRUE);
  }
  ForegroundInput(const ForegroundInput&) = delete;
  ForegroundInput& operator=(const ForegroundInput&) = delete;
  ~ForegroundInput() { AttachThreadInput(own_, foreground_, FALSE); }

 private:
  DWORD own_;
  DWORD foreground_;
};

}  // namespace

bool SendMessageInTime(HWND window, UINT message, LPARAM parameter, DWORD_PTR* result,
                       std::chrono::milliseconds limit) {
  DWORD_PTR ignored = 0;
  return SendMessageTimeoutA(window, message, 0, parameter, SMTO_ABORTIFHUNG,
                             static_cast<UINT>(limit.count()), result != nullptr ? result : &ignored) != 0;
}

bool AnswersInTime(HWND window) { return SendMessageInTime(window, WM_NULL); }

bool IsWindowOfClass(HWND window, const wchar_t* class_name) {
  wchar_t name[500] = L"";
  return GetClassNameW(window, name, static_cast<int>(std::size(name))) > 0 &&
         std::wcscmp(name, class_name) == 0;
}

std::vector<HWND> ChildrenOfClass(HWND parent, const wchar_t* class_name) {
  std::vector<HWND> children;
  for (HWND child = GetWindow(parent, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
    if (IsWindowOfClass(child, class_name)) children.push_back(child);
  }
  return children;
}

HWND FindDescendantOfClass(HWND parent, const wchar_t* class_name) {
  // FindWindowEx would take a null parent for the desktop.
  if (parent == nullptr) return nullptr;
  HWND child = nullptr;
  while ((child = FindWindowExW(parent, child, nullptr, nullptr)) != nullptr) {
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
