#pragma once

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

}  // namespace quillmate
