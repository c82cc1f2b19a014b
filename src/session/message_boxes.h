// The browser's native message boxes (alert, confirm, prompt), found and answered from outside.
#pragma once

#include <string>

namespace quillmate {

/// Presses OK in the first open message box of a browser.
/// @param text set as the text of every edit field of each box looked at; null to leave them alone. ANSI code
/// page.
/// @return whether a button was pressed.
bool AcceptMessageBox(const std::string* text = nullptr);

/// Presses Cancel in the first open message box of a browser that has such a button.
bool CancelMessageBox();

}  // namespace quillmate
