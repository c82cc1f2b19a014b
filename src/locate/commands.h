// Commands that enter frames, and that find, count, wait for and scroll to elements.
#pragma once

#include "api/command_params.h"
#include "api/result.h"

namespace quillmate::locate {

/// Enters a frame of the selected frame's page, or goes back to the parent or the top page.
/// @param params "target": a frame locator.
/// @return a plain success; "Frame not found!" when there is no page, "Can't find frame by " and the locator.
api::Result SelectFrame(const api::CommandParams& params);

/// Scrolls the page by an offset.
/// @param params "value": the offset "X,Y" in CSS pixels.
/// @return a plain success; "Frame not found!", "Scroll failed!".
api::Result Scroll(const api::CommandParams& params);

/// Scrolls an element to a position.
/// @param params "value": the position "X,Y" in CSS pixels. "target": an element locator.
/// @return a plain success; "Frame not found!", "Target not support scroll, please check!", "Scroll failed!".
api::Result ScrollTo(const api::CommandParams& params);

/// Scrolls the page so that an element can be seen.
/// @param params "target": an element locator.
/// @return a plain success; "Switch tab failed!", "Scroll into view failed!".
api::Result ScrollIntoView(const api::CommandParams& params);

/// Tells where an element is on the screen.
/// @param params "target": an element locator. "area": "left-top", "center" or "right-bottom".
/// @return the point in screen pixels; "The element is not fully visible on the browser!", "Get elementpos
/// failed!".
api::Result GetElementPos(const api::CommandParams& params);

/// Remembers an element under a name, which locators can use from then on.
/// @param params "target": an element locator. "return": the name.
/// @return a plain success; the finder's message.
api::Result GetElement(const api::CommandParams& params);

/// Tells whether an element is there, or is shown.
/// @param params "target": an element locator. "check_type": what counts as being there.
/// @return boolean.
api::Result HasElement(const api::CommandParams& params);

/// Tells whether an element is in the page.
/// @param params "target": an element locator.
/// @return boolean.
api::Result IsElementExist(const api::CommandParams& params);

/// Waits up to ten seconds for an element to appear.
/// @param params "target": an element locator. "check_type": what counts as being there.
/// @return a plain success; "Frame not found!", "Wait element show failed!".
api::Result WaitShow(const api::CommandParams& params);

/// Waits up to ten seconds for an element to go away.
/// @param params "target": an element locator. "check_type": what counts as being there.
/// @return a plain success; "Frame not found!", "Wait element disappear failed!".
api::Result WaitDisappear(const api::CommandParams& params);

/// Counts the elements that a locator finds.
/// @param params "target": an element locator.
/// @return number.
api::Result GetElementCount(const api::CommandParams& params);

/// Counts an element's children with a tag name.
/// @param params "target": an element locator. "value": the tag name.
/// @return number.
api::Result GetChildElementCount(const api::CommandParams& params);

}  // namespace quillmate::locate
