// What a run of the tests gives, and its way from the process that runs them to the one that shows them.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillmate::selftest {

enum class Outcome { kPassed, kFailed, kNotTried };

struct TestResult {
  std::string area;  ///< tests of one subject
  std::string name;
  Outcome outcome = Outcome::kPassed;
  std::string text;  ///< what failed, or why it was not tried
  std::chrono::milliseconds time{};

  std::string FullName() const { return area + "." + name; }
};

/// How the browser answered a question.
struct BrowserAnswer {
  std::string question;
  std::string answer;
  std::string expected;  ///< empty where nobody knows

  bool IsOpen() const { return expected.empty(); }
  bool Differs() const { return !IsOpen() && answer != expected; }
};

/// A line that the process with the tests writes; one of the three is there.
struct Message {
  std::optional<std::string> started;  ///< a test's name in its area
  std::optional<TestResult> ended;
  std::optional<BrowserAnswer> answer;
};

std::string LineOf(const Message& message);
/// @return nothing for a line that is no message: tests and browsers print lines too.
std::optional<Message> ReadLine(std::string_view line);

struct Line {
  std::string name;
  std::string value;
};

/// Everything that is shown.
struct Run {
  std::vector<Line> machine;
  std::vector<TestResult> tests;
  std::vector<BrowserAnswer> answers;
  std::string start;  ///< date and time
  std::chrono::milliseconds time{};
};

struct Counts {
  int passed = 0;
  int failed = 0;
  int not_tried = 0;

  void Add(Outcome outcome);
};

struct Area {
  std::string name;
  Counts counts;
};

Counts CountAll(const Run& run);
/// In the order of their first tests.
std::vector<Area> AreasOf(const Run& run);

/// A reason for which tests were not tried, and how many; the most frequent first.
struct Reason {
  std::string text;
  std::vector<std::string> tests;
};
std::vector<Reason> ReasonsOf(const Run& run);

/// @return e.g. "3 of 120 tests failed, 14 could not be tried".
std::string Sentence(const Counts& counts);

/// @return e.g. "1.4 s", "12 min 7 s".
std::string TimeOf(std::chrono::milliseconds time);

}  // namespace quillmate::selftest
