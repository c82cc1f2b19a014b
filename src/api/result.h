// The texts that the library returns to its host, {"success": …, "result": …, "log": …}, and their buffers.
#pragma once

#include <cstdint>
#include <expected>
#include <string>
#include <utility>
#include <variant>

#include "com/json.h"

namespace quillmate {

/// Why a step could not be done: the message that the host reads in "log".
struct Failure {
  std::string message;
};

template <class T>
using OrFailure = std::expected<T, Failure>;

inline std::unexpected<Failure> Failed(std::string message) {
  return std::unexpected(Failure{std::move(message)});
}

/// What a command returns. Only RunCommand turns it into text. Texts are in the ANSI code page unless the
/// command says otherwise.
struct Result {
  using Value = std::variant<std::int32_t, bool, std::string, com::JsonPtr>;

  Result(bool command_success, Value command_value, std::string message)
      : success(command_success), value(std::move(command_value)), log(std::move(message)) {}
  /// A failed step is a failed command: "success" false, "result" 0, the message as "log". Deliberate: a
  /// conversion, so that commands can `return step.error();`.
  Result(Failure failure) : success(false), value(std::int32_t{0}), log(std::move(failure.message)) {}

  bool success;
  Value value;
  std::string log;
};

/// A plain success: "result" true, no message.
inline Result Done() { return {true, true, {}}; }
inline Result Fail(std::string message) { return Failure{std::move(message)}; }
/// A text result; always a success.
inline Result Text(std::string text) { return {true, std::move(text), {}}; }
inline Result Number(std::int32_t number) { return {true, number, {}}; }
inline Result Boolean(bool flag) { return {true, flag, {}}; }
/// A structured result (an array, an object, or a text stored in the buffer for structured results); always a
/// success.
inline Result Structured(com::JsonPtr json) { return {true, std::move(json), {}}; }

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
