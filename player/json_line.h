// A line that holds one JSON object: a step of a script or a request to a server.
#pragma once

#include <expected>
#include <string>
#include <string_view>
#include <vector>

#include "json.h"

namespace quillmate::player {

/// What is wrong with a line, and at which byte.
struct LineError {
  std::size_t offset = 0;
  std::string message;
};

/// @return an error when a member is given twice. The library ignores the case of names, so names that
///   differ only in case are one.
/// @param offsets of the object's members.
std::expected<void, LineError> CheckNames(const cJSON* object, const std::vector<MemberOffsets>& offsets);

struct LineObject {
  JsonPtr object;
  std::vector<MemberOffsets> offsets;  ///< of its members, in order
};

/// Reads the object and refuses what no command could be given: invalid UTF-8, zero bytes, names given twice.
/// @param what the object is, for the message: "a step".
std::expected<LineObject, LineError> ReadLineObject(std::string_view text, std::string_view what);

}  // namespace quillmate::player
