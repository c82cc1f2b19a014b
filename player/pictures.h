// Pictures of the browser and of the screen, as PNG files.
#pragma once

#include <string>

#include "library.h"

namespace quillmate::player {

/// Takes a picture of the browser, or where that fails one of the whole screen.
/// @param folder an existing one. @param name of the file.
/// @return why the file does not show the browser; empty when it does.
std::string TakePicture(CommandHost& host, const std::string& folder, const std::string& name);

/// @return whether the file was saved.
bool SaveScreen(const std::wstring& path);

}  // namespace quillmate::player
