// The player's command line.
#pragma once

#include <expected>
#include <span>
#include <string>
#include <string_view>

#include "variables.h"

namespace quillmate::player {

/// All texts are UTF-8.
struct Options {
  std::string script;
  std::string dll;     ///< empty: quillmate.dll beside the player
  std::string report;  ///< folder; empty: no report
  Variables variables;
  std::string shots;  ///< folder of a server's pictures; empty: none
  bool serve = false;
  bool doctor = false;
  bool close_browsers = false;
  bool guard_browsers = false;  ///< how a server starts its guard
  bool json = false;
  bool keep_going = false;
  bool help = false;
};

/// @param arguments without the program's own name.
/// @return the options, or what is wrong with them.
std::expected<Options, std::string> ParseOptions(std::span<const std::string> arguments);

extern const std::string_view kHelp;

}  // namespace quillmate::player
