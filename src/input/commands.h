// Commands that type and move the mouse as a user would.
#pragma once

#include "api/command_params.h"
#include "api/result.h"

namespace quillmate::input {

/// Focuses an element and types a key sequence.
/// @param params "target": an element locator. "value": the key sequence.
/// @return a plain success; "Element not found!", "Switch tab failed!", "Send keys failed!".
api::Result SendKeys(const api::CommandParams& params);

/// Presses the left button on an element and leaves it down.
/// @param params "target": an element locator.
/// @return a plain success; "Element not found!", "Switch tab failed!", "Failed to scroll the element to the
/// view!", "Click and hold failed!".
api::Result ClickAndHold(const api::CommandParams& params);

/// Double-clicks an element.
/// @param params "target": an element locator.
/// @return a plain success; "Element not found!", "Switch tab failed!", "Failed to scroll the element to the
/// view!", "Double click failed!".
api::Result DoubleClick(const api::CommandParams& params);

/// Clicks an element with the right button.
/// @param params "target": an element locator.
/// @return a plain success; "Element not found!", "Switch tab failed!", "Failed to scroll the element to the
/// view!", "Right click failed!".
api::Result RightClick(const api::CommandParams& params);

/// Releases the left button on an element.
/// @param params "target": an element locator.
/// @return a plain success; "Element not found!", "Switch tab failed!", "Failed to scroll the element to the
/// view!", "Release failed!".
api::Result Release(const api::CommandParams& params);

/// Moves the cursor by an offset, as a hand would.
/// @param params "value": the offset "X,Y" in screen pixels.
/// @return a plain success; "Get cursor pos failed!", "Move by offset failed!".
api::Result MoveByOffset(const api::CommandParams& params);

/// Moves the cursor to an element's centre, as a hand would.
/// @param params "target": an element locator.
/// @return a plain success; "Element not found!", "Switch tab failed!", "Failed to scroll the element to the
/// view!", "Move to element failed!".
api::Result MoveToElement(const api::CommandParams& params);

/// Moves the cursor to an offset from an element's centre, as a hand would.
/// @param params "target": an element locator. "value": the offset "X,Y" in screen pixels.
/// @return a plain success; "Element not found!", "Switch tab failed!", "Failed to scroll the element to the
/// view!", "Move to element with offset failed!".
api::Result MoveToElementWithOffset(const api::CommandParams& params);

/// Moves the cursor by an offset, from an element's centre when one is given, else from where it is.
/// @param params "value": the offset "X,Y" in screen pixels, or empty for none. "target": an element locator,
/// or empty.
/// @return a plain success; the failures of the two commands that it stands for.
api::Result Move(const api::CommandParams& params);

/// Drags an element onto another.
/// @param params "target": the source's locator. "value": the destination's locator.
/// @return a plain success; "Element not found!", "Switch tab failed!", "Failed to scroll the element to the
/// view!", "Drag and drop failed!"; a destination that cannot be reached leaves the button down.
api::Result DragAndDrop(const api::CommandParams& params);

/// Drags an element by an offset.
/// @param params "target": an element locator. "value": the offset "X,Y" in screen pixels.
/// @return a plain success; "Element not found!", "Switch tab failed!", "Failed to scroll the element to the
/// view!", "Drag and drop failed!".
api::Result DragAndDropByOffset(const api::CommandParams& params);

/// Drags an element by an offset or onto another.
/// @param params "target": an element locator. "dest-type": exactly "pos" or "element". "dest-pos": the
/// offset "X,Y" in screen pixels. "dest-element": the destination's locator.
/// @return a plain success; the failures of the two commands that it stands for, and the coordinate message
/// for another "dest-type".
api::Result DragDrop(const api::CommandParams& params);

/// Does nothing: hosts that collect actions end their chain with it.
/// @return a plain success.
api::Result ActionChains(const api::CommandParams& params);

}  // namespace quillmate::input
