// The player's JSON: owned trees, and where in a script line a member stands.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "com/json.h"

namespace quillmate::player {

using com::JsonPtr;

/// @return the text of a tree on one line.
std::string PrintCompact(const cJSON* item);

/// Byte offsets of one member of an object, in the text that the object was parsed from.
struct MemberOffsets {
  std::size_t name;
  std::size_t value;
};

/// Finds the members of the outermost object of `text`, in order.
/// @param text JSON that has already been parsed without an error.
std::vector<MemberOffsets> FindMembers(std::string_view text);

/// @return the offset of the first escaped zero character, which no C text can carry; npos when there is
/// none.
std::size_t FindEscapedZero(std::string_view text);

}  // namespace quillmate::player
