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

/// @return the address of a file as a link in the page has it.
/// @param path absolute, or relative to the page.
std::string LinkTo(std::string_view path);

/// A picture that belongs to a step.
struct Picture {
  std::string link;     ///< its file as the page reaches it; empty when there is none
  std::string name;     ///< its file for people
  std::string bytes;    ///< the file itself, to be kept in the page; empty to show the file beside the page
  std::string type;     ///< "png", "bmp"; empty when browsers cannot show it
  std::string problem;  ///< why there is none, or why it does not show the browser
};

/// A part of the bar of times: one step, or in a long script several.
struct BarPart {
  int first_line = 0, last_line = 0, link_line = 0;
  std::string_view command;  ///< of the first step
  std::chrono::milliseconds time{};
  bool failed = false;
};

/// What the top of the page says.
struct PageSummary {
  std::string title;
  std::string start;       ///< date and time
  std::string_view state;  ///< "passed", "failed" or "running"
  std::string sentence;    ///< the outcome in words
  int first_failure = 0;   ///< line; 0 when there is none
};

/// @return the page up to the summary, style included.
std::string PageStart(std::string_view title);
/// @return the summary's text, before the bar of times.
std::string SummaryHtml(const PageSummary& summary);
std::string BarPartHtml(const BarPart& part);
/// @return one step: its line, and behind it parameters, expectation and answer; open when it failed. Its
///   pictures belong before kStepEnd.
/// @param first whether no step before it has failed.
std::string StepHtml(const Outcome& outcome, bool first);
std::string PictureHtml(const Picture& picture);

inline constexpr std::string_view kBarStart = "<nav class=\"times\" aria-label=\"Time of each step\">\n";
inline constexpr std::string_view kBarEnd = "</nav>\n</header>\n";
inline constexpr std::string_view kStepEnd = "</section>\n";
/// The length that no part of the bar goes beyond, in bytes.
inline constexpr std::size_t kLongestBarPart = 256;

/// @return the steps that were not played, in one list; empty when there are none.
std::string UnplayedHtml(std::span<const Step> steps);

}  // namespace quillmate::player
