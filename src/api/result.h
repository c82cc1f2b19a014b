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

}  // namespace quillmate
