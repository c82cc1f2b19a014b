// What a run looks like as text: a line a step for people, or an object a step for programs.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "runner.h"

namespace quillmate::player {

/// Where printed text goes; each call is written through at once.
class TextSink {
 public:
  virtual ~TextSink() = default;
  virtual void Write(std::string_view utf8) = 0;
  /// @return false once nobody takes the text any more.
  virtual bool Good() const { return true; }
};

/// One line a step: position in the script, command, what it acts on, outcome, time; and a closing line.
class StepPrinter : public Observer {
 public:
  /// @param steps the whole script, so that the columns fit its longest entries.
  /// @param columns maximum line width; failures are never truncated.
  StepPrinter(TextSink& out, std::span<const Step> steps, std::size_t columns);
  void Started(const Step&, const Summary&) override {}
  void Finished(const Outcome& outcome, const Summary& so_far) override;
  void Ended(const Summary& summary) override;

 private:
  TextSink& out_;
  std::size_t line_width_ = 1;
  std::size_t command_width_ = 1;
  std::size_t subject_width_ = 1;
  std::size_t outcome_width_ = 1;
};

/// One JSON object a step and nothing else on `out`; why a step failed goes to `errors`.
class JsonPrinter : public Observer {
 public:
  JsonPrinter(TextSink& out, TextSink& errors) : out_(out), errors_(errors) {}
  void Started(const Step&, const Summary&) override {}
  void Finished(const Outcome& outcome, const Summary& so_far) override;
  void Ended(const Summary&) override {}

 private:
  TextSink& out_;
  TextSink& errors_;
};

/// @return a time for people: "41 ms", "3.4 s", "2 min 5 s".
std::string TimeText(std::chrono::milliseconds time);

/// @return e.g. "1 step", "2 steps".
std::string Count(std::size_t count, std::string_view noun);

/// @return the run's outcome in one sentence.
std::string SummaryText(const Summary& summary);

}  // namespace quillmate::player
