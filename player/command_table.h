// The library's commands and their parameters, known without loading it.
#pragma once

#include <expected>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace quillmate::player {

struct CommandInfo {
  std::string_view name;
  std::span<const std::string_view> parameters;

  /// @return whether the command has this parameter; the library ignores the case of names.
  bool Takes(std::string_view parameter) const;
};

/// @return every command, in the order of the reference.
std::span<const CommandInfo> AllCommands();

/// @return null when there is no such command.
const CommandInfo* FindCommand(std::string_view name);

/// @return whether the ASCII letters of two names are the same but for their case.
bool SameIgnoringCase(std::string_view one, std::string_view other);

/// @return why no such command can be called, with the most similar name there is.
std::string UnknownCommandText(std::string_view name);

/// @return why the command cannot be given this parameter, with those that it takes.
std::string UnknownParameterText(const CommandInfo& command, std::string_view parameter);

}  // namespace quillmate::player
