// A request to a server: one line with a command, its parameters and how long it may take.
#pragma once

#include <chrono>
#include <expected>
#include <optional>
#include <string>
#include <string_view>

#include "json.h"
#include "runner.h"

namespace quillmate::player {

struct Request {
  JsonPtr id;  ///< any JSON, given back as it came; null when the request has none
  Step step;
  std::optional<std::chrono::milliseconds> time_out;
};

/// Why a request is not carried out.
struct BadRequest {
  JsonPtr id;  ///< null as well where the line cannot be read
  int column = 0;
  std::string message;
};

/// @param line UTF-8 text without its line break.
/// @param number of the line, counted from 1.
std::expected<Request, BadRequest> ReadRequest(std::string_view line, int number, const CommandHost& host);

}  // namespace quillmate::player
