#include "runner.h"

namespace quillmate::player {
namespace {

using Clock = std::chrono::steady_clock;

std::chrono::milliseconds Since(Clock::time_point start) {
  return std::chrono::round<std::chrono::milliseconds>(Clock::now() - start);
}

Outcome PlayStep(const Step& step, CommandHost& host, const AnsiDecoder& decode) {
  Outcome outcome;
  outcome.step = &step;
  const Clock::time_point start = Clock::now();
  const std::optional<std::string> answer = host.Call(step.command, step.ParameterText());
  outcome.time = Since(start);
  if (!answer) {
    outcome.failure = "the library answered a null pointer";
    return outcome;
  }
  outcome.envelope = Envelope::Read(step.command, *answer, decode);
  outcome.failure = outcome.envelope ? outcome.envelope->Mismatch(step.expect)
                                     : "the answer is no envelope: " + decode(*answer);
  return outcome;
}

}  // namespace

std::optional<ScriptError> FindUnknownCommand(std::span<const Step> steps, const CommandHost& host) {
  for (const Step& step : steps) {
    if (!host.Has(step.command))
      return ScriptError{step.line, step.command_column,
                         "the library has no command \"" + step.command + "\""};
  }
  return std::nullopt;
}

Summary Play(std::span<const Step> steps, CommandHost& host, const RunSettings& settings,
             std::span<Observer* const> observers) {
  Summary summary;
  summary.steps = steps.size();
  const Clock::time_point start = Clock::now();
  for (const Step& step : steps) {
    for (Observer* observer : observers) observer->Started(step, summary);
    const Outcome outcome = PlayStep(step, host, settings.decode);
    ++summary.played;
    if (!outcome.failure.empty()) ++summary.failed;
    summary.time = Since(start);
    for (Observer* observer : observers) observer->Finished(outcome, summary);
    if (summary.failed > 0 && !settings.keep_going) break;
  }
  for (Observer* observer : observers) observer->Ended(summary);
  return summary;
}

}  // namespace quillmate::player
