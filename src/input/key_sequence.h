#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillmate {

/// A key name from between braces, or one plain character.
using KeyToken = std::string;

/// Takes an upper-cased sequence apart. A "{" begins a name that ends at the next "}" or at the end of the
/// text; every other character, a lone "}" included, is one token.
std::vector<KeyToken> SplitKeySequence(std::string_view sequence);

/// Upper-cases ASCII letters and leaves every other byte alone, in every locale.
std::string ToUpperAscii(std::string_view text);

/// @return the virtual-key code of an upper-case key name, nothing when there is no such key.
std::optional<std::uint8_t> FindKey(std::string_view name);

}  // namespace quillmate
