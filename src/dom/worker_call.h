// Document-model calls that can stay away for as long as a dialog of the page is open. Each runs on a thread
// of its own, and the command waits for it for one second only.
#pragma once

#include <windows.h>
#include <mshtml.h>
#include <string>

#include "api/result.h"
#include "com/com_ptr.h"

namespace quillmate::dom {

/// Clicks an element on a worker thread.
/// @param element moved in, so that the caller is left with nothing to release on a page that hangs.
/// @return text "" when the click came back in time; success with number 0 when it did not, which is how a
/// click that opened a dialog is told; "Element not found!" or "Click failed!".
api::Result RunElementClickOnWorker(com::ComPtr<IHTMLElement> element);

/// Evaluates a script in a page's window on a worker thread.
/// @param script in the ANSI code page.
/// @return text: the script's value; success with number 0 when it did not end in time; "Element not found!"
/// without a usable target; "Execute script failed!".
api::Result RunScriptOnWorker(com::ComPtr<IHTMLWindow2> window, std::string script);

/// Raises the page's change event on an element on a worker thread; its handlers may go on after the wait.
void RunChangeEventOnWorker(com::ComPtr<IHTMLElement> element);

}  // namespace quillmate::dom
