#include "printers.h"

#include <algorithm>

#include "utf8.h"

namespace quillmate::player {
namespace {

constexpr std::size_t kNarrowest = 16;  // of subject and outcome
constexpr std::size_t kTimeWidth = 10;
constexpr std::string_view kLineWord = "line ";

// Line breaks and other control characters would tear the line; JSON's escapes keep it whole.
std::string OnOneLine(std::string_view text) {
  const auto is_control = [](char c) { return static_cast<unsigned char>(c) < ' '; };
  if (std::ranges::none_of(text, is_control)) return std::string(text);
  const JsonPtr string(cJSON_CreateString(std::string(text).c_str()));
  return PrintCompact(string.get());
}

// A success without a value says nothing beyond "ok".
std::string OutcomeText(const Outcome& outcome) {
  if (!outcome.failure.empty()) return "FAILED  " + OnOneLine(outcome.failure);
  if (!outcome.envelope->success()) return "ok  fails: " + OnOneLine(outcome.envelope->log());
  const cJSON* result = outcome.envelope->result();
  const bool empty = cJSON_IsString(result) && *result->valuestring == '\0';
  if (result == nullptr || cJSON_IsTrue(result) || empty) return "ok";
  return "ok  " + PrintCompact(result);
}

}  // namespace

StepPrinter::StepPrinter(TextSink& out, std::span<const Step> steps, std::size_t columns) : out_(out) {
  for (const Step& step : steps) {
    line_width_ = std::max(line_width_, std::to_string(step.line).size());
    command_width_ = std::max(command_width_, DisplayWidth(step.command));
    subject_width_ = std::max(subject_width_, DisplayWidth(OnOneLine(step.Subject())));
  }
  // Subject and outcome share what line number, command and time leave, with two blanks between all.
  const std::size_t taken = kLineWord.size() + line_width_ + command_width_ + kTimeWidth + 8;
  const std::size_t left = std::max(columns, taken + 2 * kNarrowest) - taken;
  subject_width_ = std::min(subject_width_, left / 2);
  outcome_width_ = std::min(left - subject_width_, left / 2);
}

void StepPrinter::Finished(const Outcome& outcome, const Summary&) {
  const std::string line = std::to_string(outcome.step->line);
  std::string text = OutcomeText(outcome);
  // A failure is never cut short.
  if (outcome.failure.empty() || DisplayWidth(text) < outcome_width_) text = FitTo(text, outcome_width_);
  out_.Write(std::string(kLineWord) + std::string(line_width_ - line.size(), ' ') + line + "  " +
             FitTo(outcome.step->command, command_width_) + "  " +
             FitTo(OnOneLine(outcome.step->Subject()), subject_width_) + "  " + text + "  " +
             TimeText(outcome.time) + "\n");
}

void StepPrinter::Ended(const Summary& summary) { out_.Write(SummaryText(summary) + "\n"); }

void JsonPrinter::Finished(const Outcome& outcome, const Summary&) {
  const JsonPtr object(cJSON_CreateObject());
  cJSON_AddNumberToObject(object.get(), "line", outcome.step->line);
  cJSON_AddStringToObject(object.get(), "command", outcome.step->command.c_str());
  cJSON_AddItemToObject(
      object.get(), "envelope",
      outcome.envelope ? cJSON_Duplicate(outcome.envelope->json(), true) : cJSON_CreateNull());
  cJSON_AddNumberToObject(object.get(), "ms", static_cast<double>(outcome.time.count()));
  out_.Write(PrintCompact(object.get()) + "\n");
  if (!outcome.failure.empty()) {
    errors_.Write("line " + std::to_string(outcome.step->line) + ": " + outcome.step->command + ": " +
                  outcome.failure + "\n");
  }
}

std::string TimeText(std::chrono::milliseconds time) {
  const auto ms = time.count();
  if (ms < 1000) return std::to_string(ms) + " ms";
  if (ms < 59'950) {
    const auto tenths = (ms + 50) / 100;
    return std::to_string(tenths / 10) + "." + std::to_string(tenths % 10) + " s";
  }
  const auto seconds = (ms + 500) / 1000;
  return std::to_string(seconds / 60) + " min " + std::to_string(seconds % 60) + " s";
}

std::string Count(std::size_t count, std::string_view noun) {
  return std::to_string(count) + " " + std::string(noun) + (count == 1 ? "" : "s");
}

std::string SummaryText(const Summary& summary) {
  const std::string time = " in " + TimeText(summary.time);
  if (summary.Passed()) return Count(summary.steps, "step") + ", all as expected" + time;
  const std::size_t left = summary.steps - summary.played;
  return std::to_string(summary.failed) + " of " + Count(summary.steps, "step") + " failed" +
         (summary.failed > 1 && summary.first_failure > 0
              ? ", the first in line " + std::to_string(summary.first_failure) + ","
              : "") +
         (left > 0 ? ", " + std::to_string(left) + " not played," : "") + time;
}

}  // namespace quillmate::player
