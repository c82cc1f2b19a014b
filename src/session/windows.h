// Windows as the desktop knows them, of any process; nothing here asks a browser or a page.
#pragma once

#include <windows.h>
#include <chrono>
#include <string>
#include <vector>

namespace quillmate {

/// How long a window may take to respond to a message.
inline constexpr std::chrono::milliseconds kMessageLimit(1000);

/// Sends a message, whose texts are in the ANSI code page, and waits for a limited time for its result.
/// @param result may be null.
/// @return whether the window responded in time; false at once for a window that hangs already.
bool SendMessageInTime(HWND window, UINT message, LPARAM parameter = 0, DWORD_PTR* result = nullptr,
                       std::chrono::milliseconds limit = kMessageLimit);

/// @return whether the window's thread takes messages: one message there and back. False for no window.
bool AnswersInTime(HWND window);

/// What came of the question whether a window's thread takes messages.
enum class Response {
  kAnswers,
  /// It did not answer in time. Its page may compute, wait for a server, or hang.
  kSilent,
  /// There is no such window any more.
  kGone
};

/// Asks a window's thread whether it takes messages.
/// @param limit how long it may take. Up to a second it is not waited for a window that is known to hang.
Response AskWindow(HWND window, std::chrono::milliseconds limit = kMessageLimit);

/// @return a window's text, up to 499 characters, read without asking its process.
std::wstring ReadWindowText(HWND window);

/// Whether a window's class has exactly this name.
bool IsWindowOfClass(HWND window, const wchar_t* class_name);

/// @return the direct children of a window that have a class, in Z order.
std::vector<HWND> ChildrenOfClass(HWND parent, const wchar_t* class_name);

/// @return all top-level windows, in Z order.
std::vector<HWND> TopLevelWindows();

/// @return the first window of the class under a window, depth first; null when there is none.
HWND FindDescendantOfClass(HWND parent, const wchar_t* class_name);

/// Climbs from a window through its parents, itself included.
/// @return the first window of the class, null when there is none.
HWND FindAncestorOfClass(HWND window, const wchar_t* class_name);

/// Shows, restores and maximises a top-level window and makes it the foreground window with the keyboard
/// focus.
/// @param window the window, or one inside it.
/// @return false, and nothing is touched, when the window does not respond within a second or there is none;
/// the steps' own results are not looked at.
bool BringWindowToFront(HWND window);

}  // namespace quillmate
