// Commands that read tables and take pictures of the page.
#pragma once

#include "api/command_params.h"
#include "api/result.h"

namespace quillmate::capture {

/// Reads a table, and its following pages when there is a control that turns them.
/// @param params "by": an element locator of the table or of something in it. "target": an element locator of
/// the next-page control, or empty.
/// @return text: a JSON array of rows, the texts in UTF-8; "Table not found!".
api::Result GetTable(const api::CommandParams& params);

/// Saves a picture of the current window.
/// @param params "save-path": an existing folder. "file-name": a name that ends in ".bmp", ".png" or ".tif".
/// @return a plain success; "Frame not found!", "Failed to save image!".
api::Result TakeScreenshot(const api::CommandParams& params);

/// Saves a picture of the screen where an element is.
/// @param params "target": an element locator. "save-path": an existing folder. "file-name": a name that ends
/// in ".bmp", ".png" or ".tif".
/// @return a plain success; the finder's and the geometry's messages, "Failed to save image!".
api::Result TakeElementShot(const api::CommandParams& params);

/// Describes an element: its place, size, tag name and text.
/// @param params "target": an element locator.
/// @return the object with the members "rect", "size", "tagname" and "text"; the finder's message.
api::Result GetControlInfo(const api::CommandParams& params);

}  // namespace quillmate::capture
