// A command's answer, read and turned into UTF-8.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "json.h"
#include "script.h"

namespace quillmate::player {

/// Turns bytes of the system's ANSI code page into UTF-8.
using AnsiDecoder = std::function<std::string(std::string_view)>;

class Envelope {
 public:
  /// @param bytes the answer as the library gave it. It is in the ANSI code page, but for the results of the
  ///   commands that answer in UTF-8; which bytes end a string is the same in both, so it is parsed first and
  ///   decoded afterwards, text by text.
  /// @return the envelope; none when the answer is no JSON object with "success" true or false.
  static std::optional<Envelope> Read(std::string_view command, std::string_view bytes,
                                      const AnsiDecoder& decode);

  bool success() const { return cJSON_IsTrue(Member("success")) != 0; }
  /// @return the value of "result"; null when there is none.
  const cJSON* result() const { return Member("result"); }
  /// @return the message; empty when there is none.
  std::string_view log() const;
  const cJSON* json() const { return object_.get(); }

  /// Compares with what a step expects. Without an expectation a step has to succeed.
  /// An expected array or object also matches a result that is its JSON text, however that text is laid out.
  /// @return what differs, for people; empty when nothing does.
  std::string Mismatch(const std::optional<Expectation>& expect) const;

 private:
  explicit Envelope(JsonPtr object) : object_(std::move(object)) {}
  const cJSON* Member(const char* name) const {
    return cJSON_GetObjectItemCaseSensitive(object_.get(), name);
  }
  bool Matches(const cJSON* expected) const;

  JsonPtr object_;
};

}  // namespace quillmate::player
