#include "table.h"

#include <algorithm>

#include "utf8.h"

namespace quillmate::selftest {
namespace {

constexpr std::size_t kNameWidth = 24;
constexpr std::size_t kTextWidth = 110;
constexpr int kLinesOfAFailure = 6;

const char* NameOf(Outcome outcome) {
  if (outcome == Outcome::kPassed) return "passed";
  return outcome == Outcome::kFailed ? "FAILED" : "not tried";
}

/// Set to the right of its column.
std::string Right(const std::string& text, std::size_t columns) {
  return std::string(columns - std::min(columns, text.size()), ' ') + text;
}

std::string Row(const std::string& name, const Counts& counts) {
  return player::FitTo(name, kNameWidth) + Right(std::to_string(counts.passed), 8) +
         Right(std::to_string(counts.failed), 8) + Right(std::to_string(counts.not_tried), 11) + "\n";
}

/// The first lines of a text, each with an indent.
std::string Indented(const std::string& text) {
  std::string lines;
  std::size_t begin = 0;
  for (int line = 0; begin < text.size() && line < kLinesOfAFailure; ++line) {
    const std::size_t end = std::min(text.find('\n', begin), text.size());
    lines += "    " + player::CutTo(text.substr(begin, end - begin), kTextWidth) + "\n";
    begin = end + 1;
  }
  return begin < text.size() ? lines + "    (the report has all of it)\n" : lines;
}

std::string Failures(const Run& run) {
  std::string text;
  for (const TestResult& test : run.tests) {
    if (test.outcome == Outcome::kFailed) text += "  " + test.FullName() + "\n" + Indented(test.text);
  }
  return text.empty() ? text : "\nFailed:\n" + text;
}

std::string NotTried(const Run& run) {
  std::string text;
  for (const Reason& reason : ReasonsOf(run))
    text += Right(std::to_string(reason.tests.size()), 6) + "  " + reason.text + "\n";
  return text.empty() ? text : "\nNot tried:\n" + text;
}

std::string Answers(const Run& run) {
  int open = 0;
  std::string text;
  for (const BrowserAnswer& answer : run.answers) {
    open += answer.IsOpen() ? 1 : 0;
    if (answer.Differs())
      text += "  " + answer.question + ": " + answer.answer + ", expected " + answer.expected + "\n";
  }
  if (run.answers.empty()) return {};
  return "\nThe browser answered " + std::to_string(run.answers.size()) + " questions; to " +
         std::to_string(open) + " of them nobody knew the answer.\n" +
         (text.empty() ? text : "Otherwise than expected:\n" + text);
}

}  // namespace

std::string ProgressLine(const TestResult& test, std::size_t position, std::size_t count) {
  return Right(std::to_string(position), 4) + "/" + std::to_string(count) + "  " +
         player::FitTo(NameOf(test.outcome), 9) + Right(TimeOf(test.time), 9) + "  " + test.FullName() + "\n";
}

std::string TableOf(const Run& run) {
  std::string text = "\n" + player::FitTo("area", kNameWidth) + "  passed  failed  not tried\n";
  for (const Area& area : AreasOf(run)) text += Row(area.name, area.counts);
  return text + Row("all", CountAll(run)) + Failures(run) + NotTried(run) + Answers(run);
}

}  // namespace quillmate::selftest
