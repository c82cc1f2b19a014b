// The windows that the shell's collection lists, and the objects behind them.
#pragma once

#include <windows.h>
#include <oaidl.h>
#include <vector>

#include "com/owned.h"

namespace testbrowser::shell {

struct ShellItem {
  enum class Kind { kTab, kFolder, kNothing };
  Kind kind = Kind::kTab;
  HWND server = nullptr;  ///< a tab's page window
};

/// What the screen's browser windows give, in an order that a change of the active tab does not disturb.
std::vector<ShellItem> FindShellItems();

/// @return the browser object of a tab, also of one that hangs, or a folder's object; null for nothing, and for a tab
/// that is gone.
quillmate::com::ComPtr<IDispatch> ObjectOf(const ShellItem& item);

}  // namespace testbrowser::shell
