// Scripts of the engine itself, run in every frame before the agents and before the page's own.
#pragma once

namespace testbrowser::engine::shims {

extern const char kReports[];  ///< before the others
extern const char kBackChannel[];
extern const char kMessageBoxes[];
extern const char kDropDowns[];
/// A function expression: called with the dialogArguments in a modal dialog's frames only.
extern const char kDialogWindow[];

/// The function whose `debugger` statement means a message box; its parameter is `request`, its variable
/// `answer`.
inline constexpr char kAskFunction[] = "testbrowserAsk";
/// The binding by which shims report to the engine.
inline constexpr char kNotifyBinding[] = "testbrowserNotify";

}  // namespace testbrowser::engine::shims
