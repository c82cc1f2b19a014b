// The texts that `--set NAME=VALUE` gives and `${NAME}` takes.
#pragma once

#include <expected>
#include <map>
#include <string>
#include <string_view>

namespace quillmate::player {

using Variables = std::map<std::string, std::string, std::less<>>;

/// @return whether `name` can be written as `${name}`: letters, digits and '_', no digit first.
bool IsVariableName(std::string_view name);

/// Fills in every `${NAME}` of a text once; what is filled in is not looked at again. A "${" that begins no
/// name stands for itself.
/// @return the filled text, or the first name that has no value.
std::expected<std::string, std::string> Substitute(std::string_view text, const Variables& variables);

}  // namespace quillmate::player
