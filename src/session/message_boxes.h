// The browser's native message boxes (alert, confirm, prompt), found and answered from outside.
#pragma once

#include <windows.h>
#include <optional>
#include <string>

namespace quillmate {

/// What a message box shows.
struct OpenBox {
  std::wstring title;
  std::wstring text;
};

/// Finds the first open message box of a browser, without waiting for any window.
/// @param owner the top-level window that the box belongs to; null for any browser's.
std::optional<OpenBox> FindMessageBox(HWND owner = nullptr);

/// Presses OK in the first open message box of a browser. The title and text of each box looked at go to the
/// debug output.
/// @param text set as the text of every edit field of each box looked at; null to leave them alone. ANSI code
/// page.
/// @return whether a button was pressed.
bool AcceptMessageBox(const std::string* text = nullptr);

/// Presses Cancel in the first open message box of a browser that has such a button.
bool CancelMessageBox();

}  // namespace quillmate
