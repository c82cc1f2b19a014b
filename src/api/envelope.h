// The texts that the library hands to its host: {"success": …, "result": …, "log": …}, and who owns them.
#pragma once

#include <memory>

#include "api/result.h"

namespace quillmate::api {

struct JsonTextDeleter {
  void operator()(char* text) const { cJSON_free(text); }
};
using JsonText = std::unique_ptr<char, JsonTextDeleter>;

/// Prints a result with the members in their order, bytes as they are; "log" only when there is a message.
/// @return null when there is no memory for it.
JsonText PrintEnvelope(Result result);

/// The last text of each group. Numbers and booleans are one group, texts and structured values the other: a
/// host can read a text while it issues commands that answer plain successes.
class ResultBuffers {
 public:
  /// Prints the result into its group's buffer; the group's former text is freed first.
  /// @return the text, valid until the group's next result; null when there is no memory for it.
  const char* Store(Result result);

 private:
  JsonText flags_;
  JsonText texts_;
};

}  // namespace quillmate::api
