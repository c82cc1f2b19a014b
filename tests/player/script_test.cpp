// What a script's author relies on: what is read, what is filled in, and where a mistake is reported.
#include "script.h"

#include <gtest/gtest.h>

namespace quillmate::player {
namespace {

const Variables kVariables = {{"PAGE", "file:///C:/a.html"}, {"RAW", "a\"b\\c${PAGE}"}, {"EMPTY", ""}};

Step OnlyStep(std::string_view text) {
  auto steps = ParseScript(text, kVariables);
  EXPECT_TRUE(steps.has_value()) << text << ": " << (steps ? "" : steps.error().message);
  if (!steps || steps->size() != 1) return {};
  return std::move(steps->front());
}

TEST(Script, SkipsBlankLinesAndCommentsAndCountsThemAsLines) {
  for (const std::string_view newline : {"\n", "\r\n"}) {
    std::string text = "\xEF\xBB\xBF# first";
    for (const std::string_view line :
         {"", "  ", R"({"command":"back"})", "  # last", R"({"command":"refresh"})"})
      text.append(newline).append(line);
    const auto steps = ParseScript(text, {});
    ASSERT_TRUE(steps.has_value());
    ASSERT_EQ(steps->size(), 2U);
    EXPECT_EQ((*steps)[0].line, 4);
    EXPECT_EQ((*steps)[1].line, 6);
    EXPECT_EQ((*steps)[1].command, "refresh");
  }
}

TEST(Script, PassesEveryOtherStringMemberAsAParameterAndNothingElse) {
  const Step step = OnlyStep(
      R"({"target":"id=a","shot":true,"command":"type_m","value":"x \"y\" é","expect":{"success":true}})");
  EXPECT_EQ(step.ParameterText(), R"({"target":"id=a","value":"x \"y\" é"})");
  EXPECT_TRUE(step.shot);
  EXPECT_EQ(OnlyStep(R"({"command":"back"})").ParameterText(), "{}");
}

TEST(Script, FillsVariablesIntoTextsOnceAndUnescaped) {
  struct Row {
    std::string written, filled;
  };
  for (const Row& row :
       {Row{"${PAGE}", "file:///C:/a.html"}, Row{"<${RAW}>", "<a\"b\\c${PAGE}>"}, Row{"${EMPTY}${EMPTY}", ""},
        Row{"$ {PAGE} ${} ${1} ${a b} ${", "$ {PAGE} ${} ${1} ${a b} ${"},
        Row{"$${PAGE}}", "$file:///C:/a.html}"}, Row{"${${PAGE}", "${file:///C:/a.html"}}) {
    const Step step = OnlyStep(R"({"command":"open","target":")" + row.written + "\"}");
    ASSERT_EQ(step.parameters.size(), 1U);
    EXPECT_EQ(step.parameters[0].value, row.filled) << row.written;
  }
  const Step step = OnlyStep(R"({"command":"x","expect":{"result":["${PAGE}"],"log":"${EMPTY}"}})");
  EXPECT_EQ(PrintCompact(step.expect->result.get()), R"(["file:///C:/a.html"])");
  EXPECT_EQ(step.expect->log, "");
}

TEST(Script, KeepsALineOfAMegabyteWhole) {
  const std::string value(1 << 20, 'v');
  EXPECT_EQ(OnlyStep(R"({"command":"type_m","value":")" + value + "\"}").parameters.at(0).value, value);
}

TEST(Script, ReportsAMistakeAtItsLineAndColumn) {
  struct Row {
    std::string line;
    int column;
    std::string message;
  };
  const std::vector<Row> rows = {
      {R"({"command":"open",})", 20, "not valid JSON"},
      {R"({"command":"back"} {})", 20, "not valid JSON"},
      {R"({"command":"back")", 18, "not valid JSON"},
      {"hello", 1, "not valid JSON"},
      {R"(  ["command"])", 3, "a step is a JSON object"},
      {R"(  {"target":"id=a"})", 3, "a step needs a \"command\""},
      {R"({"command":""})", 12, "\"command\" is the name of a command"},
      {R"({"command":7})", 12, "\"command\" is the name of a command"},
      {R"({"é":"é","command":"x","value":5})", 32,
       "\"value\" is no string: every parameter of a command is one"},
      {R"({"command":"x","target":"a","target":"b"})", 29, "\"target\" is given twice"},
      {R"({"command":"x","shot":"true"})", 23, "\"shot\" is true or false"},
      {R"({"command":"x","expect":true})", 25, "\"expect\" is an object"},
      {R"({"command":"x","target":"a","Target":"b"})", 29,
       "\"Target\" and \"target\" are one name: the library ignores case"},
      {R"({"command":"x","expect":{"log":"a","log":"b"}})", 36, "\"log\" is given twice"},
      {R"({"command":"x","expect":{"log":"${NOT_THIS}${NO}"},"value":"${NO}"})", 33,
       "${NOT_THIS} has no value: give --set NOT_THIS=TEXT"},
      {R"({"command":"x","value":"${PAGE}${PAG}"})", 32, "${PAG} has no value: give --set PAG=TEXT"},
      {R"({"command":"x","expect":{"sucess":true}})", 26, "\"expect\" cannot hold \"sucess\": true"},
      {R"({"command":"x","expect":{"success":1}})", 26, "\"expect\" cannot hold \"success\": 1"},
      {R"({"command":"x","a":"{[\"]}","value":"é${NO}"})", 39, "${NO} has no value: give --set NO=TEXT"},
      {R"({"command":"x","value":"a\\\u0000"})", 28, "a text cannot hold the character \\u0000"},
      {"{\"command\":\"\xC3\"}", 13, "not valid UTF-8"},
      {std::string("{\"command\":\"x\0\"}", 16), 14, "a zero byte in the text"},
  };
  for (const Row& row : rows) {
    const auto steps = ParseScript("{\"command\":\"fine\"}\n" + row.line + "\n", kVariables);
    ASSERT_FALSE(steps.has_value()) << row.line;
    EXPECT_EQ(steps.error().line, 2) << row.line;
    EXPECT_EQ(steps.error().column, row.column) << row.line;
    EXPECT_EQ(steps.error().message, row.message) << row.line;
  }
}

}  // namespace
}  // namespace quillmate::player
