// UTF-8 text as a person sees it: validity, characters and columns of a terminal.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quillmate::player {

/// @return the offset of the first byte that is not valid UTF-8; npos when all of it is.
std::size_t FindInvalidUtf8(std::string_view text);

/// @return how many terminal columns the text takes: East Asian wide characters two, combining marks none.
std::size_t DisplayWidth(std::string_view text);

/// @return the text padded with blanks to `columns`, or cut and ended by an ellipsis to fit in them.
std::string FitTo(std::string_view text, std::size_t columns);
/// @return the text, cut and ended by an ellipsis where it is wider than `columns`.
std::string CutTo(std::string_view text, std::size_t columns);

/// @return the position of a byte of a line, in characters counted from 1.
int ColumnOf(std::string_view line, std::size_t offset);

}  // namespace quillmate::player
