#include "runner.h"

#include "command_table.h"

namespace quillmate::player {
namespace {

std::chrono::milliseconds Since(std::chrono::steady_clock::time_point start, const Clock& now) {
  return std::chrono::round<std::chrono::milliseconds>(now() - start);
}

Outcome PlayStep(const Step& step, CommandHost& host, const RunSettings& settings) {
  Outcome outcome;
  outcome.step = &step;
  const auto start = settings.now();
  const std::optional<std::string> answer = host.Call(step.command, step.ParameterText());
  outcome.time = Since(start, settings.now);
  outcome.notes = host.TakeNotes();
  if (!answer) {
    outcome.failure = "the library answered a null pointer";
    return outcome;
  }
  outcome.envelope = Envelope::Read(step.command, *answer, settings.decode);
  outcome.failure = outcome.envelope ? outcome.envelope->Mismatch(step.expect)
                                     : "the answer is no envelope: " + settings.decode(*answer);
  return outcome;
}

}  // namespace

std::optional<ScriptError> FindWrongStep(std::span<const Step> steps, const CommandHost& host) {
  for (const Step& step : steps) {
    if (!host.Has(step.command))
      return ScriptError{step.line, step.command_column, UnknownCommandText(step.command)};
    const CommandInfo* const command = FindCommand(step.command);
    if (command == nullptr) continue;
    for (const StepParameter& parameter : step.parameters) {
      if (!command->Takes(parameter.name))
        return ScriptError{step.line, parameter.column, UnknownParameterText(*command, parameter.name)};
    }
  }
  return std::nullopt;
}

Summary Play(std::span<const Step> steps, CommandHost& host, const RunSettings& settings,
             std::span<Observer* const> observers) {
  Summary summary;
  summary.steps = steps.size();
  const auto start = settings.now();
  for (const Step& step : steps) {
    for (Observer* observer : observers) observer->Started(step, summary);
    const Outcome outcome = PlayStep(step, host, settings);
    ++summary.played;
    if (!outcome.failure.empty() && ++summary.failed == 1) summary.first_failure = step.line;
    summary.time = Since(start, settings.now);
    for (Observer* observer : observers) observer->Finished(outcome, summary);
    if (summary.failed > 0 && !settings.keep_going) break;
  }
  for (Observer* observer : observers) observer->Ended(summary);
  return summary;
}

}  // namespace quillmate::player
