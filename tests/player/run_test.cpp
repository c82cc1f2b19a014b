// A run with a library of the test's own: how answers are read, compared and shown.
#include <gtest/gtest.h>

#include "fake_host.h"
#include "options.h"
#include "printers.h"
#include "progress.h"
#include "text_buffer.h"
#include "utf8.h"

namespace quillmate::player {
namespace {

using std::chrono::milliseconds;

// Stands for a code page: every byte above 127 is one letter.
std::string DecodeOneByteLetters(std::string_view bytes) {
  std::string text;
  for (const char byte : bytes) text += static_cast<unsigned char>(byte) < 0x80 ? std::string(1, byte) : "é";
  return text;
}

std::vector<Step> Parse(std::string_view script) {
  auto steps = ParseScript(script, {});
  EXPECT_TRUE(steps.has_value());
  return steps ? *std::move(steps) : std::vector<Step>();
}

std::string MismatchOf(std::string_view expect, std::string_view envelope) {
  const auto steps = Parse(R"({"command":"c")" + std::string(expect) + "}");
  const auto read = Envelope::Read("c", envelope, DecodeOneByteLetters);
  return steps.empty() || !read ? "unread" : read->Mismatch(steps[0].expect);
}

TEST(Expectation, ComparesOnlyTheMembersThatAreGiven) {
  const std::string passed = R"({"success":true,"result":true})";
  const std::string failed = R"({"success":false,"result":0,"log":"Frame not found!"})";
  const std::string table = R"({"success":true,"result":"[\t[0, 1],\n\t[\"a\", \"b\"]]"})";
  struct Row {
    std::string expect, envelope, mismatch;
  };
  const std::vector<Row> rows = {
      {"", passed, ""},
      {"", failed, "Frame not found!"},
      {"", R"({"success":false,"result":0})", "did not succeed"},
      {R"(,"expect":{})", failed, ""},
      {R"(,"expect":{"success":false})", failed, ""},
      {R"(,"expect":{"success":false})", passed, "expected success false, got true"},
      {R"(,"expect":{"success":true})", failed, "expected success true, got false (Frame not found!)"},
      {R"(,"expect":{"log":"Frame not found!"})", failed, ""},
      {R"(,"expect":{"log":""})", passed, ""},
      {R"(,"expect":{"log":"no"})", failed, R"(expected log "no", got "Frame not found!")"},
      {R"(,"expect":{"result":true})", passed, ""},
      {R"(,"expect":{"result":1})", passed, "expected result 1, got true"},
      {R"(,"expect":{"result":"0"})", failed, R"(expected result "0", got 0 (Frame not found!))"},
      {R"(,"expect":{"result":[[0,1],["a","b"]]})", table, ""},
      {R"(,"expect":{"result":[[0,1],["a","B"]]})", table,
       R"(expected result [[0,1],["a","B"]], got "[\t[0, 1],\n\t[\"a\", \"b\"]]")"},
      {R"(,"expect":{"result":")" + std::string(300, 'a') + "\"}", passed,
       "expected result \"" + std::string(198, 'a') + "…, got true"},
      {R"(,"expect":{"result":{"b":1,"a":2}})", R"({"success":true,"result":{"a":2,"b":1}})", ""},
      {R"(,"expect":{"result":"x"})", R"({"success":true})", R"(expected result "x", got none)"},
  };
  for (const Row& row : rows) EXPECT_EQ(MismatchOf(row.expect, row.envelope), row.mismatch) << row.expect;
}

TEST(Envelope, DecodesTheAnsiCodePageButNotWhatIsUtf8Already) {
  struct Row {
    std::string command, answer, decoded;
  };
  const std::vector<Row> rows = {
      {"gettext", "{\"success\":true,\"result\":\"caf\xE9\"}", R"({"success":true,"result":"café"})"},
      {"gettext", "{\"success\":false,\"result\":0,\"log\":\"\xE9\"}",
       R"({"success":false,"result":0,"log":"é"})"},
      {"getcontrolinfo", "{\"success\":true,\"result\":{\"text\":\"\xE9\"}}",
       R"({"success":true,"result":{"text":"é"}})"},
      {"gettable", "{\"success\":true,\"result\":\"[\\\"确定\\\"]\"}",
       R"({"success":true,"result":"[\"确定\"]"})"},
      {"currenturl", R"({"success":true,"result":"é"})", R"({"success":true,"result":"é"})"},
      {"currenturl", "{\"success\":true,\"result\":\"\xE9\"}", R"({"success":true,"result":"é"})"},
      // A trailing byte of a double-byte code page may be a backslash, which the library has escaped.
      {"gettext", "{\"success\":true,\"result\":\"\x81\\\\\"}", R"({"success":true,"result":"é\\"})"},
  };
  for (const Row& row : rows) {
    const auto envelope = Envelope::Read(row.command, row.answer, DecodeOneByteLetters);
    ASSERT_TRUE(envelope.has_value()) << row.answer;
    EXPECT_EQ(PrintCompact(envelope->json()), row.decoded);
  }
  for (const std::string_view broken : {"", "{", "[]", "{}", R"({"success":1})"})
    EXPECT_FALSE(Envelope::Read("gettext", broken, DecodeOneByteLetters).has_value()) << broken;
}

constexpr std::string_view kScript = R"({"command":"back"}
{"command":"gettext","target":"id=a"}

{"command":"gone","target":"名前"}
{"command":"bad"}
{"command":"back"})";

FakeHost ScriptHost() {
  return FakeHost({{"back", R"({"success":true,"result":true})"},
                   {"gettext", "{\"success\":true,\"result\":\"a\\nb\"}"},
                   {"gone", std::nullopt},
                   {"bad", "oops"}});
}

// A clock that goes on by 20 ms each time that it is looked at.
Clock TickingClock() {
  return [now = std::chrono::steady_clock::time_point()]() mutable { return now += milliseconds(20); };
}

Summary RunScript(bool keep_going, Observer& observer, const std::vector<Step>& steps) {
  FakeHost host = ScriptHost();
  Observer* observers[] = {&observer};
  return Play(steps, host, {.keep_going = keep_going, .decode = DecodeOneByteLetters, .now = TickingClock()},
              observers);
}

TEST(Run, PrintsALineAStepAndStopsAtTheFirstFailure) {
  const auto steps = Parse(kScript);
  TextBuffer out;
  StepPrinter printer(out, steps, 65);
  const Summary summary = RunScript(false, printer, steps);
  EXPECT_FALSE(summary.Passed());
  EXPECT_EQ(summary.played, 3U);
  const std::string blanks(15, ' ');
  EXPECT_TRUE(
      out.text.starts_with("line 1  back           ok" + blanks +
                           "  20 ms\n"
                           "line 2  gettext  id=a  ok  \"a\\nb\"" +
                           std::string(7, ' ') +
                           "  20 ms\n"
                           "line 4  gone     名前  FAILED  the library answered a null pointer  20 ms\n"
                           "1 of 5 steps failed, 2 not played, in "))
      << out.text;
}

TEST(Run, KeepsGoingWhenAskedAndPrintsObjectsForPrograms) {
  const auto steps = Parse(kScript);
  TextBuffer out, errors;
  JsonPrinter printer(out, errors);
  const Summary summary = RunScript(true, printer, steps);
  EXPECT_EQ(summary.played, 5U);
  EXPECT_EQ(summary.failed, 2U);
  EXPECT_EQ(out.text,
            R"({"line":1,"command":"back","envelope":{"success":true,"result":true},"ms":20}
{"line":2,"command":"gettext","envelope":{"success":true,"result":"a\nb"},"ms":20}
{"line":4,"command":"gone","envelope":null,"ms":20}
{"line":5,"command":"bad","envelope":null,"ms":20}
{"line":6,"command":"back","envelope":{"success":true,"result":true},"ms":20}
)");
  EXPECT_EQ(errors.text,
            "line 4: gone: the library answered a null pointer\n"
            "line 5: bad: the answer is no envelope: oops\n");
}

TEST(Run, FindsWrongCommandsAndParametersBeforeAnythingIsPlayed) {
  const FakeHost host({{"back", std::nullopt}, {"click", std::nullopt}, {"new_one", std::nullopt}});
  struct Row {
    std::string line;
    int column;
    std::string message;
  };
  const std::vector<Row> rows = {
      {"{\"target\":\"é\", \"command\":\"bakc\"}", 26,
       "the library has no command \"bakc\"; is \"back\" meant?"},
      {R"({"command":"nothing like it"})", 12, "the library has no command \"nothing like it\""},
      {R"({"command":"click","targt":"id=a"})", 20,
       R"("click" has no parameter "targt"; its parameters are "target", "manual-click")"},
      {R"({"command":"back","value":"1"})", 19, R"("back" has no parameter "value"; it has none)"},
      // The table has it, the library at hand does not.
      {R"({"command":"refresh"})", 12, "the library has no command \"refresh\""},
  };
  for (const Row& row : rows) {
    const auto error = FindWrongStep(Parse("{\"command\":\"back\"}\n" + row.line), host);
    ASSERT_TRUE(error.has_value()) << row.line;
    EXPECT_EQ(error->line, 2);
    EXPECT_EQ(error->column, row.column) << row.line;
    EXPECT_EQ(error->message, row.message);
  }
  EXPECT_FALSE(FindWrongStep(Parse(R"({"command":"click","Manual-Click":"True"}
{"command":"new_one","whatever":"1"})"),
                             host));
}

TEST(Run, SaysTimesAndOutcomesInWords) {
  EXPECT_EQ(TimeText(milliseconds(999)), "999 ms");
  EXPECT_EQ(TimeText(milliseconds(3449)), "3.4 s");
  EXPECT_EQ(TimeText(milliseconds(59'999)), "1 min 0 s");
  EXPECT_EQ(SummaryText({.steps = 1, .played = 1, .failed = 0, .first_failure = 0, .time = milliseconds(41)}),
            "1 step, all as expected in 41 ms");
  EXPECT_EQ(
      SummaryText({.steps = 3, .played = 3, .failed = 2, .first_failure = 0, .time = milliseconds(2000)}),
      "2 of 3 steps failed in 2.0 s");
  EXPECT_EQ(SummaryText({.steps = 9, .played = 9, .failed = 2, .first_failure = 4, .time = milliseconds(5)}),
            "2 of 9 steps failed, the first in line 4, in 5 ms");
}

TEST(Progress, TellsPositionAndTimeLeftWithinTheColumns) {
  const auto steps = Parse(R"({"command":"click","target":"id=a"})");
  const Summary so_far{.steps = 4, .played = 2, .failed = 0, .first_failure = 0, .time = milliseconds(6000)};
  EXPECT_EQ(ProgressText(steps[0], {.steps = 4, .played = 0, .failed = 0, .first_failure = 0, .time = {}},
                         milliseconds(0), 80),
            "[--------------------]  1 of 4  click id=a");
  EXPECT_EQ(ProgressText(steps[0], so_far, milliseconds(1000), 80),
            "[##########----------]  3 of 4  click id=a  about 5 s left");
  EXPECT_LE(DisplayWidth(ProgressText(steps[0], so_far, milliseconds(9000), 40)), 40U);
}

TEST(DisplayWidth, CountsWhatATerminalShows) {
  EXPECT_EQ(DisplayWidth("aé确e\u0301😀"), 1U + 1 + 2 + 1 + 2);
  EXPECT_EQ(FitTo("确定确定", 6), "确定… ");
  EXPECT_EQ(FitTo("ab", 4), "ab  ");
  EXPECT_EQ(CutTo("abcd", 4), "abcd");
}

TEST(Options, AreReadOrRefusedWithAReason) {
  struct Row {
    std::vector<std::string> arguments;
    std::string error;
  };
  const std::vector<Row> rows = {
      {{}, "no script is given"},
      {{"--serve", "a"}, "--serve takes --dll, --shots and --close-browsers alone"},
      {{"--doctor", "a"}, "--doctor takes --json alone"},
      {{"a", "--shots", "d"}, "--shots and --close-browsers belong to --serve"},
      {{"a", "b"}, "more than one script: a, b"},
      {{"a", "--fast"}, "unknown option --fast"},
      {{"a", "--json", "--json"}, "--json is given twice"},
      {{"a", "--dll", "x", "--dll", "y"}, "--dll is given twice"},
      {{"a", "--dll"}, "--dll needs a value"},
      {{"a", "--report", ""}, "--report is empty"},
      {{"a", "--set", "x"}, "--set takes NAME=VALUE, not x"},
      {{"a", "--set", "1x=y"}, "--set takes NAME=VALUE, not 1x=y"},
      {{"a", "--set", "x=y", "--set", "x=z"}, "--set x is given twice"},
  };
  for (const Row& row : rows) {
    const auto options = ParseOptions(row.arguments);
    ASSERT_FALSE(options.has_value()) << row.error;
    EXPECT_EQ(options.error(), row.error);
  }
  const std::vector<std::string> all = {"--set",  "A=b=c",    "s.jsonl", "--keep-going", "--dll", "d",
                                        "--json", "--report", "r"};
  const auto options = ParseOptions(all);
  ASSERT_TRUE(options.has_value());
  EXPECT_EQ(options->variables.at("A"), "b=c");
  const std::vector<std::string> dashed = {"--json", "--", "--help"};
  EXPECT_EQ(ParseOptions(dashed)->script, "--help");
  EXPECT_EQ(ParseOptions(std::vector<std::string>{"-"})->script, "-");
  EXPECT_TRUE(options->json && options->keep_going && options->script == "s.jsonl" && options->dll == "d" &&
              options->report == "r");
}

}  // namespace
}  // namespace quillmate::player
