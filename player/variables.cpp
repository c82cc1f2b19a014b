#include "variables.h"

#include <algorithm>

namespace quillmate::player {
namespace {

bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_'; }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }

}  // namespace

bool IsVariableName(std::string_view name) {
  return !name.empty() && !IsDigit(name[0]) &&
         std::ranges::all_of(name, [](char c) { return IsLetter(c) || IsDigit(c); });
}

std::expected<std::string, std::string> Substitute(std::string_view text, const Variables& variables) {
  static constexpr std::string_view kOpening = "${";
  std::string filled;
  for (std::size_t start; (start = text.find(kOpening)) != std::string_view::npos;) {
    filled.append(text.substr(0, start));
    text.remove_prefix(start + kOpening.size());
    const std::string_view name = text.substr(0, text.find('}'));
    if (name.size() == text.size() || !IsVariableName(name)) {
      filled.append(kOpening);
      continue;
    }
    const auto found = variables.find(name);
    if (found == variables.end()) return std::unexpected(std::string(name));
    filled.append(found->second);
    text.remove_prefix(name.size() + 1);
  }
  return filled.append(text);
}

}  // namespace quillmate::player
