#include "shell/dialog_features.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <optional>
#include <string>

namespace testbrowser::shell {
namespace {

std::string_view Trimmed(std::string_view text) {
  const auto is_space = [](char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; };
  while (!text.empty() && is_space(text.front())) text.remove_prefix(1);
  while (!text.empty() && is_space(text.back())) text.remove_suffix(1);
  return text;
}

bool EqualsIgnoringCase(std::string_view a, std::string_view b) {
  return std::ranges::equal(a, b, [](char x, char y) {
    return std::tolower(static_cast<unsigned char>(x)) == std::tolower(static_cast<unsigned char>(y));
  });
}

/// The value of a feature in pixels; nothing when it is absent or no number.
std::optional<LONG> Pixels(std::string_view features, std::string_view name) {
  while (!features.empty()) {
    const std::size_t end = std::min(features.find(';'), features.size());
    const std::string_view feature = features.substr(0, end);
    features.remove_prefix(std::min(end + 1, features.size()));
    const std::size_t separator = feature.find_first_of(":=");
    if (separator == std::string_view::npos ||
        !EqualsIgnoringCase(Trimmed(feature.substr(0, separator)), name)) {
      continue;
    }
    const std::string_view value = Trimmed(feature.substr(separator + 1));
    LONG number = 0;
    const auto parsed = std::from_chars(value.data(), value.data() + value.size(), number);
    if (parsed.ec == std::errc()) return number;
  }
  return std::nullopt;
}

}  // namespace

RECT DialogClientPlace(std::string_view features, const RECT& opener) {
  constexpr LONG kWidth = 400;
  constexpr LONG kHeight = 300;
  constexpr LONG kLeast = 100;  // the smallest that a dialog can be made
  const LONG width = std::max(Pixels(features, "dialogWidth").value_or(kWidth), kLeast);
  const LONG height = std::max(Pixels(features, "dialogHeight").value_or(kHeight), kLeast);
  const LONG left = Pixels(features, "dialogLeft").value_or((opener.left + opener.right - width) / 2);
  const LONG top = Pixels(features, "dialogTop").value_or((opener.top + opener.bottom - height) / 2);
  return {left, top, left + width, top + height};
}

}  // namespace testbrowser::shell
