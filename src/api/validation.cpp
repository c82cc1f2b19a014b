#include "api/validation.h"

#include <charconv>

#include "api/patterns.h"

namespace quillmate {
namespace {

constexpr size_t kMaxLocatorBytes = 65'535;

bool HasLocatorLength(std::string_view text) { return !text.empty() && text.size() <= kMaxLocatorBytes; }

std::optional<int> ParseInt(std::string_view digits) {
  int value = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  if (error != std::errc()) return std::nullopt;
  return value;
}

}  // namespace

bool IsElementLocator(std::string_view text) {
  return HasLocatorLength(text) && (Matches(Pattern::kElementKey, text) || Matches(Pattern::kIdXpath, text) ||
                                    Matches(Pattern::kXpath, text));
}

bool IsWindowLocator(std::string_view text) {
  return HasLocatorLength(text) &&
         (IsElementLocator(text) || Matches(Pattern::kIndex, text) || Matches(Pattern::kUrlKey, text) ||
          Matches(Pattern::kTitle, text) || Matches(Pattern::kHandle, text));
}

bool IsTextValue(std::string_view text) { return Matches(Pattern::kFreeText, text); }

bool IsOptionSelector(std::string_view text) {
  return HasLocatorLength(text) && (Matches(Pattern::kIndex, text) || Matches(Pattern::kOption, text));
}

bool IsFrameLocator(std::string_view text) {
  return HasLocatorLength(text) && (Matches(Pattern::kRelativeFrame, text) ||
                                    Matches(Pattern::kIndex, text) || Matches(Pattern::kFrameKey, text));
}

bool IsArea(std::string_view text) { return Matches(Pattern::kArea, text); }

std::optional<CoordinatePair> ParseCoordinatePair(std::string_view text) {
  if (!Matches(Pattern::kCoordinatePair, text)) return std::nullopt;
  const size_t comma = text.find(',');
  // The pattern allows 32 digits, so a well-formed number can still be too large.
  const auto x = ParseInt(text.substr(0, comma));
  const auto y = ParseInt(text.substr(comma + 1));
  if (!x || !y) return std::nullopt;
  return CoordinatePair{*x, *y};
}

}  // namespace quillmate
