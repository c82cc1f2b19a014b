// A script: one command with its parameters and its expected answer a line.
#pragma once

#include <expected>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "json.h"
#include "variables.h"

namespace quillmate::player {

/// What a step's envelope must hold. A member that was not given is not compared.
struct Expectation {
  std::optional<bool> success;
  JsonPtr result;
  std::optional<std::string> log;
};

struct StepParameter {
  std::string name, value;
  int column = 0;  ///< of the name, in characters from 1
};

struct Step {
  int line = 0;            ///< counted from 1
  int command_column = 0;  ///< where the command's name stands, in characters from 1
  std::string command;
  std::vector<StepParameter> parameters;
  std::optional<Expectation> expect;
  bool shot = false;  ///< the report wants a picture after this step

  /// The parameters as the command takes them: UTF-8 JSON text of one object.
  std::string ParameterText() const;
  /// @param name in any case, as in the library.
  /// @return the parameter's value; empty when it is not given.
  std::string_view Parameter(std::string_view name) const;
  /// What the step acts on, for people.
  std::string_view Subject() const;
};

/// Why a script cannot be played, and where. Lines and columns count from 1, columns in characters.
struct ScriptError {
  int line = 0;
  int column = 0;
  std::string message;
};

/// Reads a whole script, so that a mistake in its last line is found before its first step is played.
/// @param text UTF-8, with or without a byte order mark, lines ended by LF or CRLF. Blank lines and lines
///   that begin with '#' are skipped.
std::expected<std::vector<Step>, ScriptError> ParseScript(std::string_view text, const Variables& variables);

}  // namespace quillmate::player
