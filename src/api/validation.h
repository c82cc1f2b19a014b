// The form that parameter values must have.
#pragma once

#include <optional>
#include <string_view>

namespace quillmate {

/// "id=", "name=" or "class=" with a value, or an "xpath=" path; 1 to 65,535 bytes without line breaks.
bool IsElementLocator(std::string_view text);
/// An element locator, "index=N", "url=" with a scheme, or "title=" or "handle=" with a value; 1 to 65,535
/// bytes.
bool IsWindowLocator(std::string_view text);
/// Any text of 0 to 65,535 bytes, line breaks included.
bool IsTextValue(std::string_view text);
/// "index=N", "value=" or "label=" with any text, the empty one included; 1 to 65,535 bytes.
bool IsOptionSelector(std::string_view text);
/// "relative=parent", "relative=top", "index=N", or "id=", "src=", "name=" with any text; 1 to 65,535 bytes.
bool IsFrameLocator(std::string_view text);
/// "left-top", "center" or "right-bottom".
bool IsArea(std::string_view text);

/// Two numbers; the command decides whether they are a position or an offset in pixels.
struct CoordinatePair {
  int x = 0;
  int y = 0;
};
/// Reads "X,Y": decimal numbers without blanks, plus signs or leading zeros.
/// @return nothing for any other text and for a number beyond 32 bits.
std::optional<CoordinatePair> ParseCoordinatePair(std::string_view text);

}  // namespace quillmate
