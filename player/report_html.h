// The parts of the report's page as HTML text.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "runner.h"

namespace quillmate::player {

/// @return the text as HTML shows it, in an element as in an attribute.
std::string EscapeHtml(std::string_view text);

std::string EncodeBase64(std::string_view bytes);

/// A picture that belongs to a step.
struct Picture {
  std::string link;     ///< its file as the page reaches it
  std::string bytes;    ///< the PNG itself; empty when there is none
  std::string problem;  ///< why there is none
};

/// One step of the bar of times.
struct StepTime {
  const Step* step;
  std::chrono::milliseconds time;
  bool failed;
};

/// What stands at the top of the page.
struct PageSummary {
  std::string title;
  std::string start;       ///< date and time
  std::string_view state;  ///< "passed", "failed" or "running"
  std::string sentence;    ///< the outcome in words
  std::vector<StepTime> times;
};

/// @return the page up to the summary, style included.
std::string PageStart(std::string_view title);
std::string SummaryHtml(const PageSummary& summary);
/// @return one step: its line, and behind it parameters, expectation and answer; open when it failed.
std::string StepHtml(const Outcome& outcome, std::span<const Picture> pictures);
/// @return the steps that were not played, in one list; empty when there are none.
std::string UnplayedHtml(std::span<const Step> steps);

}  // namespace quillmate::player
