#include "command_table.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <vector>

namespace quillmate::player {
namespace {

template <class... Names>
constexpr std::array<std::string_view, sizeof...(Names)> List(Names... names) {
  return {names...};
}

#define QUILLMATE_COMMAND(name, function, failure, ...) constexpr auto k_##name = List(__VA_ARGS__);
#define QUILLMATE_SAME_COMMAND(name, same, ...) constexpr auto k_##name = List(__VA_ARGS__);
#include "command_list.inc"
#undef QUILLMATE_COMMAND
#undef QUILLMATE_SAME_COMMAND

#define QUILLMATE_COMMAND(name, function, failure, ...) CommandInfo{#name, k_##name},
#define QUILLMATE_SAME_COMMAND(name, same, ...) CommandInfo{#name, k_##name},
constexpr CommandInfo kCommands[] = {
#include "command_list.inc"
};
#undef QUILLMATE_COMMAND
#undef QUILLMATE_SAME_COMMAND

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

// How many letters have to be changed, left out or put in to make one name of the other.
std::size_t Distance(std::string_view one, std::string_view other) {
  std::vector<std::size_t> row(other.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 0; i < one.size(); ++i) {
    std::size_t diagonal = row[0]++;
    for (std::size_t j = 0; j < other.size(); ++j) {
      const std::size_t changed = diagonal + (Lower(one[i]) == Lower(other[j]) ? 0 : 1);
      diagonal = row[j + 1];
      row[j + 1] = std::min({changed, row[j] + 1, diagonal + 1});
    }
  }
  return row.back();
}

constexpr std::size_t kSimilar = 2;  // letters

}  // namespace

bool CommandInfo::Takes(std::string_view parameter) const {
  return std::ranges::any_of(parameters,
                             [&](std::string_view known) { return SameIgnoringCase(known, parameter); });
}

std::span<const CommandInfo> AllCommands() { return kCommands; }

const CommandInfo* FindCommand(std::string_view name) {
  const auto found = std::ranges::find(kCommands, name, &CommandInfo::name);
  return found == std::end(kCommands) ? nullptr : found;
}

bool SameIgnoringCase(std::string_view one, std::string_view other) {
  return std::ranges::equal(one, other, {}, Lower, Lower);
}

std::string UnknownCommandText(std::string_view name) {
  const auto distance = [name](const CommandInfo& command) { return Distance(name, command.name); };
  const auto nearest = std::ranges::min_element(kCommands, {}, distance);
  const std::string text = "the library has no command \"" + std::string(name) + "\"";
  if (distance(*nearest) > kSimilar || name == nearest->name) return text;
  return text + "; is \"" + std::string(nearest->name) + "\" meant?";
}

std::string UnknownParameterText(const CommandInfo& command, std::string_view parameter) {
  std::string known;
  for (const std::string_view name : command.parameters)
    known += (known.empty() ? "its parameters are \"" : "\", \"") + std::string(name);
  return "\"" + std::string(command.name) + "\" has no parameter \"" + std::string(parameter) + "\"; " +
         (known.empty() ? "it has none" : known + "\"");
}

}  // namespace quillmate::player
