// Whether a window of another process takes messages, asked before anything that would wait until it does.
#pragma once

#include <windows.h>

namespace quillmate::session {

/// How long a window may take to answer a message, in milliseconds.
inline constexpr UINT kAnswerTimeoutMs = 1000;

/// @return whether the window's thread takes messages: one message there and back. False for no window.
inline bool AnswersInTime(HWND window) {
  return SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_ABORTIFHUNG, kAnswerTimeoutMs, nullptr) != 0;
}

}  // namespace quillmate::session
