// Plays a script: hands each step to the library and each outcome to whoever shows it.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "envelope.h"
#include "script.h"

namespace quillmate::player {

/// The library as the player sees it.
class CommandHost {
 public:
  virtual ~CommandHost() = default;
  virtual bool Has(const std::string& command) const = 0;
  /// @return the bytes of the answer; none when the command answered a null pointer.
  virtual std::optional<std::string> Call(const std::string& command, const std::string& parameters) = 0;
  /// @return what the library wrote for debuggers since the last time, in UTF-8.
  virtual std::vector<std::string> TakeNotes() { return {}; }
};

struct Outcome {
  const Step* step = nullptr;
  std::optional<Envelope> envelope;
  std::chrono::milliseconds time{};
  std::string failure;             ///< why the step failed, for people; empty when it went as expected
  std::vector<std::string> notes;  ///< what the library wrote for debuggers meanwhile
};

struct Summary {
  std::size_t steps = 0;   ///< in the script
  std::size_t played = 0;  ///< so far
  std::size_t failed = 0;
  int first_failure = 0;  ///< the script's line; 0 when no step has failed
  std::chrono::milliseconds time{};

  bool Passed() const { return failed == 0 && played == steps; }
};

/// Shows a run while it goes on.
class Observer {
 public:
  virtual ~Observer() = default;
  virtual void Started(const Step& step, const Summary& so_far) = 0;
  virtual void Finished(const Outcome& outcome, const Summary& so_far) = 0;
  virtual void Ended(const Summary& summary) = 0;
};

using Clock = std::function<std::chrono::steady_clock::time_point()>;

struct RunSettings {
  bool keep_going = false;  ///< play on after a failed step
  AnsiDecoder decode;
  Clock now = std::chrono::steady_clock::now;
};

/// @return where and why, when a step names a command or a parameter that the library does not have. The
///   parameters of a command that only this library has are not known.
std::optional<ScriptError> FindWrongStep(std::span<const Step> steps, const CommandHost& host);

Summary Play(std::span<const Step> steps, CommandHost& host, const RunSettings& settings,
             std::span<Observer* const> observers);

}  // namespace quillmate::player
