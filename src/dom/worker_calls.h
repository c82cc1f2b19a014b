// DOM calls that may block while the page shows a dialog or runs a script. Each runs on a worker thread, and
// the command waits for it for one second only.
#pragma once

#include <windows.h>
#include <mshtml.h>
#include <optional>
#include <string>
#include <string_view>

#include "api/result.h"
#include "com/owned.h"
#include "session/session.h"

namespace quillmate {

/// Evaluates a script as the page's own code would. Blocks while the script runs. Why a script failed goes to
/// the debug output.
/// @param script in the ANSI code page.
/// @return the value's text in the ANSI code page: "" for null and undefined, true or false, a number's or a
/// string's text, an object's default text, "[object]" for an object without one; nothing when the script
/// threw or the page ran none.
std::optional<std::string> EvaluateScript(IHTMLWindow2* window, std::string_view script);

/// How a click ended: it returned; it has not returned in time; a dialog of the page holds it up; it failed.
enum class ClickOutcome { kReturned, kStillRunning, kHeldUp, kFailed };

/// Clicks an element and waits for a second.
/// @param element moved in, so that the caller is left with nothing to release on a page that hangs.
/// @return kReturned or kStillRunning; "Element not found!" without a usable target; "Click failed!".
OrFailure<ClickOutcome> ClickElementOnWorker(Session& session, com::ComPtr<IHTMLElement> element);

/// Clicks an element and waits as long as a call may take, but not behind a dialog, which nobody could answer
/// meanwhile.
/// @param element moved in.
ClickOutcome ClickElementAndWait(Session& session, com::ComPtr<IHTMLElement> element);

/// Evaluates a script in a page's window, as the page's own code would.
/// @param script in the ANSI code page.
/// @return the value's text as EvaluateScript gives it; nothing when the script is still running after a
/// second. "Element not found!" without a usable target; "Execute script failed!" when the script threw.
OrFailure<std::optional<std::string>> RunScriptOnWorker(Session& session, com::ComPtr<IHTMLWindow2> window,
                                                        std::string script);

/// Raises the page's change event on an element, since a change made through the object model raises none.
/// Its handlers may go on after a second's wait.
/// @param element moved in.
/// @return false when the page has not had the event.
bool RaiseChangeOnWorker(com::ComPtr<IHTMLElement> element);

}  // namespace quillmate
