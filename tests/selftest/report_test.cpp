// What the self-test shows of a run, and the lines by which its processes tell each other.
#include <gtest/gtest.h>

#include "arguments.h"
#include "page.h"
#include "table.h"

namespace quillmate::selftest {
namespace {

using std::chrono::milliseconds;

Run SampleRun() {
  Run run;
  run.machine = {{"Windows", "Windows <10>"}};
  run.tests = {{"Forms", "TypesAText", Outcome::kPassed, "", milliseconds(1240)},
               {"Forms", "FillsAList", Outcome::kFailed, "a < b\nsecond line", milliseconds(10)},
               {"Tables", "CountsCalls", Outcome::kNotTried, "It counts calls.", milliseconds(1)},
               {"Search", "CountsCalls", Outcome::kNotTried, "It counts calls.", milliseconds(1)},
               {"Search", "TakesTheMouse", Outcome::kNotTried, "It takes the mouse.", milliseconds(1)}};
  run.answers = {{"eval", "absent", ""}, {"rectangle", "at 1,1", "at 3,3"}, {"mode", "VT_R4 5", "VT_R4 5"}};
  return run;
}

/// The part of a page between a section's beginning and its end.
std::string SectionOf(const std::string& page, const std::string& id) {
  const size_t begin = page.find("<section id=\"" + id + "\">");
  return begin == std::string::npos ? "" : page.substr(begin, page.find("</section>", begin) - begin);
}

TEST(SelfTestPage, PutsEachResultIntoItsPart) {
  const std::string page = PageOf(SampleRun());
  EXPECT_TRUE(page.contains("1 of 5 tests failed, 3 could not be tried"));
  EXPECT_TRUE(page.contains("Windows &lt;10&gt;"));
  const struct {
    const char* section;
    const char* holds;
    const char* lacks;
  } rows[] = {
      {"failed", "Forms: Fills a list", "Types a text"},
      {"failed", "a &lt; b\nsecond line", "a < b"},
      {"differs", "at 1,1", "VT_R4 5"},
      {"open", "absent", "at 1,1"},
      {"known", "VT_R4 5", "absent"},
      {"not-tried", "It takes the mouse.", "Forms"},
      {"not-tried", "<li>Search.CountsCalls</li>", "<<"},
      {"tests", "1.2 s", "<<"},
  };
  for (const auto& row : rows) {
    const std::string section = SectionOf(page, row.section);
    EXPECT_TRUE(section.contains(row.holds)) << row.section << " lacks " << row.holds << "\n" << section;
    EXPECT_FALSE(section.contains(row.lacks)) << row.section << " has " << row.lacks;
  }
}

TEST(SelfTestPage, HasNoEmptyParts) {
  selftest::Run run = SampleRun();
  run.tests.resize(1);
  run.answers.clear();
  const std::string page = PageOf(run);
  EXPECT_TRUE(page.contains("1 of 1 test passed, none failed"));
  for (const char* section : {"failed", "differs", "open", "known", "not-tried"})
    EXPECT_EQ(SectionOf(page, section), "") << section;
}

TEST(SelfTestTable, CountsAreasAndReasons) {
  const std::string table = TableOf(SampleRun());
  EXPECT_TRUE(table.contains("Forms                          1       1          0\n")) << table;
  EXPECT_TRUE(table.contains("all                            1       1          3\n")) << table;
  EXPECT_TRUE(table.contains("     2  It counts calls.\n     1  It takes the mouse.\n")) << table;
  EXPECT_TRUE(table.contains("rectangle: at 1,1, expected at 3,3")) << table;
  EXPECT_TRUE(table.contains("answered 3 questions; to 1 of them")) << table;
}

TEST(SelfTestLines, CarryWhatWasWritten) {
  const TestResult result{"Forms", "A/0", Outcome::kFailed, "two\nlines \"quoted\"", milliseconds(7)};
  const std::string line = LineOf({.started = {}, .ended = result, .answer = {}});
  EXPECT_FALSE(line.contains('\n'));
  const auto read = ReadLine(line);
  ASSERT_TRUE(read && read->ended);
  EXPECT_EQ(read->ended->FullName(), "Forms.A/0");
  EXPECT_EQ(read->ended->outcome, Outcome::kFailed);
  EXPECT_EQ(read->ended->text, result.text);
  EXPECT_EQ(read->ended->time, result.time);
  const auto answer = ReadLine(LineOf({.started = {}, .ended = {}, .answer = BrowserAnswer{"q", "a", "e"}}));
  ASSERT_TRUE(answer && answer->answer);
  EXPECT_TRUE(answer->answer->Differs());
  for (const char* other : {"", "DevTools listening", "{\"message\": \"else\"}", "{\"message\": 5}"})
    EXPECT_FALSE(ReadLine(other)) << other;
}

TEST(SelfTestOptions, AreCheckedBeforeAnythingStarts) {
  const struct {
    std::vector<std::string> arguments;
    const char* error;
  } rows[] = {{{"--browser", "other"}, "--browser takes ie or edge, not other"},
              {{"--report"}, "--report lacks its value"},
              {{"--limit", "5s"}, "--limit takes a number of seconds"},
              {{"--quick"}, "unknown option --quick"}};
  for (const auto& row : rows) {
    const auto options = ParseOptions(row.arguments);
    ASSERT_FALSE(options) << row.error;
    EXPECT_EQ(options.error(), row.error);
  }
  const auto good = ParseOptions(std::vector<std::string>{"--browser", "edge", "--no-input", "--limit", "9"});
  ASSERT_TRUE(good) << good.error();
  EXPECT_EQ(good->input, Input::kLeave);
  EXPECT_EQ(good->limit_s, 9);
}

}  // namespace
}  // namespace quillmate::selftest
