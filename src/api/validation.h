// The form that parameter values must have.
#pragma once

#include <optional>
#include <string_view>

namespace quillmate {

/// The forms of text that commands recognise, as regular expressions over bytes; patterns.cpp has the
/// expressions.
enum class Pattern {
  kUrl,
  kSignedInteger,
  kUnsignedInteger,
  kFreeText,
  kArea,
  kIdXpath,
  kXpath,
  kTextStep,
  kContainsStep,
  kStartsWithStep,
  kAttributeStep,
  kKeyValue,
  kAnyXpath,
  kElementKey,
  kOption,
  kFrameKey,
  kId,
  kName,
  kClass,
  kIndex,
  kValue,
  kSrc,
  kLabel,
  kTitle,
  kUrlKey,
  kAnchor,
  kHandle,
  kRelativeFrame,
  kCoordinatePair,
};
inline constexpr int kPatternCount = static_cast<int>(Pattern::kCoordinatePair) + 1;

/// Whether the whole text has the form. Takes time proportional to the text's length, and little stack,
/// for every text.
bool Matches(Pattern pattern, std::string_view text);

/// The expression as documented, in the ECMAScript grammar; Matches() may use an equivalent one.
const char* PublishedSpelling(Pattern pattern);

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
