// The texts that the library returns to its host, {"success": …, "result": …, "log": …}, and their buffers.
#pragma once

#include <string>

#include "api/result.h"

namespace quillmate {

/// Prints a result with the members in their order, bytes as they are; "log" only when there is a message.
/// @return null when there is no memory for it.
com::JsonText PrintEnvelope(Result result);

/// Holds a text at a place that changes only when a text is longer than usual.
class TextBuffer {
 public:
  TextBuffer() { text_.reserve(kUsualLength); }
  /// @return the copy; null for a null text.
  const char* Hold(com::JsonText text);

 private:
  /// Longer than any plain failure.
  static constexpr size_t kUsualLength = 2047;

  std::string text_;
};

/// The last text of each group. Numbers and booleans are one group, texts and structured values the other: a
/// host can read a text while it issues commands that return plain successes.
class ResultBuffers {
 public:
  /// Prints the result into its group's buffer, where it takes the place of the group's former text.
  /// @return the text, valid until the group's next result; null when there is no memory for it.
  const char* Store(Result result);

 private:
  TextBuffer flags_;
  TextBuffer texts_;
};

}  // namespace quillmate
