#include "session/message_boxes.h"

#include <windows.h>
#include <algorithm>
#include <array>
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
  /// A button with the label was found, which ends the search.
  bool matched = false;
  bool pressed = false;
};

/// The window's text as the desktop holds it. Unlike GetWindowText it sends no message to a window of this
/// process, whose thread may be waiting for the command.
std::wstring TextOf(HWND window) {
  wchar_t text[kTextCapacity] = L"";
  const int length = InternalGetWindowText(window, text, kTextCapacity);
  return {text, static_cast<size_t>(length > 0 ? length : 0)};
}

std::string NarrowText(HWND window) {
  const std::wstring wide = TextOf(window);
  char narrow[kTextCapacity * 4];
  const int bytes = WideCharToMultiByte(CP_THREAD_ACP, 0, wide.data(), static_cast<int>(wide.size()), narrow,
                                        sizeof narrow, nullptr, nullptr);
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

enum class Delivery { kHandled, kLate, kFailed };

/// Sends a message and waits a second for its result. One that is late has arrived all the same.
Delivery Deliver(HWND window, UINT message) {
  constexpr UINT kWaitMs = 1000;
  if (SendMessageTimeoutW(window, message, 0, 0, SMTO_NORMAL, kWaitMs, nullptr) != 0)
    return Delivery::kHandled;
  return GetLastError() == ERROR_TIMEOUT ? Delivery::kLate : Delivery::kFailed;
}

/// Presses and releases a button. A thread that is busy with the press takes the release after it, so that
/// the button does not stay half pressed.
bool Press(HWND button) {
  switch (Deliver(button, WM_LBUTTONDOWN)) {
    case Delivery::kHandled:
      return Deliver(button, WM_LBUTTONUP) != Delivery::kFailed;
    case Delivery::kLate:
      return SendNotifyMessageW(button, WM_LBUTTONUP, 0, 0) != FALSE;
    case Delivery::kFailed:
      break;
  }
  return false;
}

BOOL CALLBACK PressLabelled(HWND child, LPARAM parameter) {
  auto& search = *reinterpret_cast<BoxSearch*>(parameter);
  if (!IsLabelled(child, search.labels)) return TRUE;
  search.matched = true;
  search.pressed = Press(child);
  return FALSE;
}

bool IsBrowserBox(HWND window) {
  if (!IsWindowVisible(window)) return false;
  HWND owner = GetParent(window);
  return owner != nullptr && TextOf(owner).contains(L"Internet Explorer");
}

/// A prompt has a label above its text, so the last static control that is not empty holds what the page
/// said.
BOOL CALLBACK TakeStaticText(HWND child, LPARAM parameter) {
  if (!IsWindowOfClass(child, L"Static")) return TRUE;
  if (std::wstring text = TextOf(child); !text.empty()) *reinterpret_cast<std::wstring*>(parameter) = text;
  return TRUE;
}

OpenBox Read(HWND box) {
  OpenBox result{TextOf(box), {}};
  EnumChildWindows(box, TakeStaticText, reinterpret_cast<LPARAM>(&result.text));
  return result;
}

void Log(const OpenBox& box) {
  OutputDebugStringW(box.title.c_str());
  OutputDebugStringA("\r\n");
  if (!box.text.empty()) OutputDebugStringW((box.text + L"\r\n").c_str());
}

struct BoxLookup {
  HWND owner;
  HWND found = nullptr;
};

BOOL CALLBACK TakeBox(HWND window, LPARAM parameter) {
  auto& lookup = *reinterpret_cast<BoxLookup*>(parameter);
  const bool is_box = IsWindowOfClass(window, L"#32770") && IsWindowVisible(window) &&
                      (lookup.owner != nullptr ? GetParent(window) == lookup.owner : IsBrowserBox(window));
  if (is_box) lookup.found = window;
  return !is_box;
}

BOOL CALLBACK AnswerBox(HWND window, LPARAM parameter) {
  auto& search = *reinterpret_cast<BoxSearch*>(parameter);
  if (!IsBrowserBox(window)) return TRUE;
  Log(Read(window));
  if (search.text != nullptr) {
    EnumChildWindows(window, FillEdit, reinterpret_cast<LPARAM>(search.text->c_str()));
  }
  EnumChildWindows(window, PressLabelled, parameter);
  return !search.matched;
}

bool Answer(const ButtonLabels& labels, const std::string* text) {
  BoxSearch search{labels, text};
  EnumWindows(AnswerBox, reinterpret_cast<LPARAM>(&search));
  return search.pressed;
}

}  // namespace

std::optional<OpenBox> FindMessageBox(HWND owner) {
  BoxLookup lookup{owner};
  EnumWindows(TakeBox, reinterpret_cast<LPARAM>(&lookup));
  if (lookup.found == nullptr) return std::nullopt;
  return Read(lookup.found);
}

bool AcceptMessageBox(const std::string* text) { return Answer(kOkLabels, text); }
bool CancelMessageBox() { return Answer(kCancelLabels, nullptr); }

}  // namespace quillmate
