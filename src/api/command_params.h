// The parameters of one command: JSON text of one object whose members are strings.
#pragma once

#include <string>

namespace quillmate::api {

class CommandParams {
 public:
  /// @param text the parameter text in the ANSI code page, converted once from the host's UTF-8.
  explicit CommandParams(std::string text) : text_(std::move(text)) {}

  /// Reads one member by name, ignoring ASCII case; the first that matches wins.
  /// @return the member's text; empty when it is missing, no string, or the parameter text is no JSON object.
  std::string Get(const char* key) const;

 private:
  std::string text_;
};

}  // namespace quillmate::api
