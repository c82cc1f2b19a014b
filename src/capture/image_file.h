// Pictures as files.
#pragma once

#include <string>

#include "capture/pixels.h"

namespace quillmate::capture {

/// Whether a file name's extension, the text after its last ".", is exactly "bmp", "png" or "tif".
bool IsImageFileName(const std::string& file_name);

/// Writes a picture in the format of the file name's extension; an existing file is replaced, a missing
/// folder is not made.
/// @param folder, file_name in the ANSI code page.
/// @return whether the file was written.
bool SaveImage(const Pixels& pixels, const std::string& folder, const std::string& file_name);

}  // namespace quillmate::capture
