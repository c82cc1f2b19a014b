// DOM calls that may block while the page shows a dialog or runs a script. Each runs on a worker thread, and
// the command waits for it for one second only.
#pragma once

#include <windows.h>
#include <mshtml.h>
#include <optional>
#include <string>

#include "api/result.h"
#include "com/com_ptr.h"
#include "session/session.h"

namespace quillmate {

enum class ClickOutcome { kReturned, kStillRunning };

/// Clicks an element.
/// @param element moved in, so that the caller is left with nothing to release on a page that hangs.
/// @return "Element not found!" without a usable target; "Click failed!".
OrFailure<ClickOutcome> ClickElementOnWorker(Session& session, com::ComPtr<IHTMLElement> element);

/// Evaluates a script in a page's window, as the page's own code would.
/// @param script in the ANSI code page.
/// @return the value's text in the ANSI code page: "" for null and undefined, true or false, a number's or a
/// string's text; nothing when the script is still running. "Element not found!" without a usable target;
/// "Execute script failed!" when the script threw, or its value has no text.
OrFailure<std::optional<std::string>> RunScriptOnWorker(Session& session, com::ComPtr<IHTMLWindow2> window,
                                                        std::string script);

/// Raises the page's change event on an element, since a change made through the object model raises none.
/// Its handlers may go on after the wait.
void RaiseChangeOnWorker(com::ComPtr<IHTMLElement> element);

}  // namespace quillmate
