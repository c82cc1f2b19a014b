// The library as a host sees it: loaded by name, its commands called with JSON.
#pragma once

#include <initializer_list>
#include <iosfwd>
#include <string>
#include <utility>

namespace quillmate::test {

/// A command's answer, parsed. Two answers are equal when everything in them is.
struct Envelope {
  bool success = false;
  /// The "result" member as unformatted JSON: 0, true, "text", [1,2].
  std::string result;
  /// The "log" member; empty when there is none.
  std::string log;

  bool operator==(const Envelope&) const = default;
};
std::ostream& operator<<(std::ostream& out, const Envelope& envelope);

/// The answers that commands give.
Envelope Succeeded();
Envelope Failed(std::string message);
Envelope Answered(const std::string& text);
/// A worker call that did not come back in time.
Envelope StillRunning();

using Parameters = std::initializer_list<std::pair<std::string, std::string>>;

/// Calls a command of the library under test.
/// @param parameters texts in UTF-8.
Envelope Call(const char* command, Parameters parameters = {});

/// A command's answer, and how many seconds it took.
struct Timed {
  Envelope envelope;
  double seconds = 0;
};
Timed CallTimed(const char* command, Parameters parameters = {});

/// Calls a command with a text as it stands.
/// @return the printed envelope as it stands; null when the command answered null.
const char* CallRaw(const char* command, const char* text);

}  // namespace quillmate::test
