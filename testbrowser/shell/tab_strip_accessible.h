// The tab strip's accessibility tree: a client object with one page tab list "Tab Row", whose children are
// the tabs and, last, the New Tab button.
#pragma once

#include <windows.h>
#include <oleacc.h>

#include "com/owned.h"

namespace testbrowser::shell {

class Frame;
class TabStrip;

/// The tree's root for the frame as it is now; it follows the frame's tabs and goes empty with the frame.
quillmate::com::ComPtr<IAccessible> MakeTabStripAccessible(Frame& frame, TabStrip& strip);

}  // namespace testbrowser::shell
