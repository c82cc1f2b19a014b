// Commands that act on elements through the document, and that answer message boxes.
#pragma once

#include "api/command_params.h"
#include "api/result.h"

namespace quillmate::dom {

/// Clicks an element by its own click method, or with the mouse.
/// @param params "target": an element locator. "manual-click": exactly "True" uses the mouse.
/// @return by method, the empty text, or success with the number 0 when the page has not returned after a
/// second; by mouse, a plain success. "Element not found!", "Click failed!"; by mouse also "Switch tab
/// failed!", "Failed to scroll the element to the view!", and "Double click failed!" when the cursor cannot
/// be placed.
api::Result Click(const api::CommandParams& params);

/// Replaces the value of an edit field.
/// @param params "target": an element locator. "value": the text.
/// @return a plain success; "Element not found!", "Switch tab failed!", "Send keys failed!", "Set attribute
/// failed!".
api::Result TypeText(const api::CommandParams& params);

/// Adds text to the value of an edit field.
/// @param params "target": an element locator. "value": the text.
/// @return a plain success; "Element not found!", "Failed to add text to the edit box!".
api::Result Append(const api::CommandParams& params);

/// Empties an edit field.
/// @param params "target": an element locator.
/// @return a plain success; "Element not found!", "Failed to clear the edit box!".
api::Result Clear(const api::CommandParams& params);

/// Selects an option of a drop-down list.
/// @param params "target": an element locator. "value": an option selector.
/// @return a plain success; "Frame not found!", "Get tagName failed!", "Not dropdown menu element!", "Get
/// option failed!", "Target option not found!".
api::Result Select(const api::CommandParams& params);

/// Clears the selection of an option; the element is resolved before the option selector is checked.
/// @param params "target": an element locator. "value": an option selector.
/// @return a plain success; "Frame not found!", "Get tagName failed!", "Not dropdown menu element!",
/// "Deselect failed!", "Target option not found!".
api::Result Deselect(const api::CommandParams& params);

/// Reads an attribute.
/// @param params "target": an element locator. "value": the attribute's name.
/// @return text: the attribute's value in the ANSI code page; "Element not found!", "Get attribute failed!".
api::Result GetAttribute(const api::CommandParams& params);

/// Reads an element's rendered text.
/// @param params "target": an element locator.
/// @return text: the element's innerText in the ANSI code page; "Element not found!", "Get text failed!".
api::Result GetText(const api::CommandParams& params);

/// Puts text into an element through the document.
/// @param params "target": an element locator. "value": the text.
/// @return a plain success; "Element not found!", "Send keys to element failed!".
api::Result SendKeysToElement(const api::CommandParams& params);

/// Evaluates a script in the selected frame's page.
/// @param params "value": the script.
/// @return text: the script's value; success with the number 0 when it has not returned after a second.
/// "Frame not found!", "Get parent window failed!", "Execute script failed!".
api::Result ExecuteScript(const api::CommandParams& params);

/// Reads the source of the selected frame's page.
/// @return text: the document element's outer HTML in the ANSI code page; "Frame not found!".
api::Result PageSource(const api::CommandParams& params);

/// Reads the cookies of the selected frame's page.
/// @return the cookie text, in the structured group; "Frame not found!", "Current IE tab is NULL!", "Get
/// cookie failed!".
api::Result GetCookie(const api::CommandParams& params);

/// Answers an open message box with OK.
/// @return a plain success; "Assertalert failed".
api::Result AssertAlert(const api::CommandParams& params);

/// Answers an open confirmation with OK.
/// @return a plain success; "Choose ok on next confirmation failed!".
api::Result ChooseOkOnNextConfirmation(const api::CommandParams& params);

/// Answers an open confirmation with Cancel.
/// @return a plain success; "Choose cancel on next confirmation failed!".
api::Result ChooseCancelOnNextConfirmation(const api::CommandParams& params);

/// Fills an open prompt and answers it with OK.
/// @param params "value": the text.
/// @return a plain success; "Answer on next prompt failed!".
api::Result AnswerOnNextPrompt(const api::CommandParams& params);

/// Answers an open prompt with Cancel.
/// @return a plain success; "Choose cancel on next prompt failed!".
api::Result ChooseCancelOnNextPrompt(const api::CommandParams& params);

/// Answers an open box of any kind.
/// @param params "accept": exactly "True" for OK, "False" for Cancel. "input-value": the text for a prompt's
/// field.
/// @return a plain success; "Click on alert dialog failed!".
api::Result ClickOnAlertDialog(const api::CommandParams& params);

}  // namespace quillmate::dom
