#include "session/message_boxes.h"

#include <windows.h>
#include <algorithm>
#include <array>
#include <cwchar>
#include <iterator>
#include <string_view>

#include "session/windows.h"

namespace quillmate {
namespace {

constexpr int kTextCapacity = 500;

/// The captions that a button may have, as the bytes of the thread's code page.
struct ButtonLabels {
  std::array<std::string_view, 4> labels;
  /// The word in code page 936.
  std::string_view fallback;
};

// The fourth entries are kept byte for byte: they are the words as another code page misreads them.
constexpr ButtonLabels kOkLabels{{"ok", "Ok", "OK", "\xE7\xBA\xAD\xEE\x86\xBC\xE7\x95\xBE"},
                                 "\xC8\xB7\xB6\xA8"};
constexpr ButtonLabels kCancelLabels{{"cancel", "Cancel", "CANCEL", "\xE9\x8D\x99\xE6\xA0\xA8\xE7\xA7\xB7"},
                                     "\xC8\xA1\xCF\xFB"};

struct BoxSearch {
  const ButtonLabels& labels;
  const std::string* text;
  bool pressed = false;
};

std::string NarrowText(HWND window) {
  wchar_t wide[kTextCapacity] = L"";
  const int length = GetWindowTextW(window, wide, kTextCapacity);
  char narrow[kTextCapacity * 4];
  const int bytes =
      WideCharToMultiByte(CP_THREAD_ACP, 0, wide, length, narrow, sizeof narrow, nullptr, nullptr);
  return std::string(narrow, static_cast<size_t>(bytes));
}

bool IsLabelled(HWND button, const ButtonLabels& wanted) {
  const std::string caption = NarrowText(button);
  return caption == wanted.fallback || std::ranges::find(wanted.labels, caption) != wanted.labels.end();
}

BOOL CALLBACK FillEdit(HWND child, LPARAM parameter) {
  if (IsWindowOfClass(child, L"Edit")) SendMessageInTime(child, WM_SETTEXT, parameter);
  return TRUE;
}

BOOL CALLBACK PressLabelled(HWND child, LPARAM parameter) {
  auto& search = *reinterpret_cast<BoxSearch*>(parameter);
  if (!IsLabelled(child, search.labels)) return TRUE;
  search.pressed = SendMessageInTime(child, WM_LBUTTONDOWN) && SendMessageInTime(child, WM_LBUTTONUP);
  return !search.pressed;
}

bool IsBrowserBox(HWND window) {
  HWND owner = GetParent(window);
  wchar_t title[kTextCapacity] = L"";
  if (owner == nullptr) return false;
  GetWindowTextW(owner, title, kTextCapacity);
  return std::wcsstr(title, L"Internet Explorer") != nullptr && IsWindowVisible(window);
}

void LogTitle(HWND box) {
  wchar_t title[kTextCapacity] = L"";
  GetWindowTextW(box, title, kTextCapacity);
  OutputDebugStringW(title);
  OutputDebugStringA("\r\n");
}

BOOL CALLBACK AnswerBox(HWND window, LPARAM parameter) {
  auto& search = *reinterpret_cast<BoxSearch*>(parameter);
  if (!IsBrowserBox(window)) return TRUE;
  LogTitle(window);
  if (search.text != nullptr) {
    EnumChildWindows(window, FillEdit, reinterpret_cast<LPARAM>(search.text->c_str()));
  }
  EnumChildWindows(window, PressLabelled, parameter);
  return !search.pressed;
}

bool Answer(const ButtonLabels& labels, const std::string* text) {
  BoxSearch search{labels, text};
  EnumWindows(AnswerBox, reinterpret_cast<LPARAM>(&search));
  return search.pressed;
}

}  // namespace

bool AcceptMessageBox(const std::string* text) { return Answer(kOkLabels, text); }
bool CancelMessageBox() { return Answer(kCancelLabels, nullptr); }

}  // namespace quillmate
