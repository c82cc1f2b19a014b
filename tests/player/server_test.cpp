// A server with a library of the test's own: what each line of input is answered by.
#include "server.h"

#include <gtest/gtest.h>

#include <atomic>
#include <latch>

#include "fake_host.h"
#include "opened_browsers.h"
#include "text_buffer.h"

namespace quillmate::player {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

class TextSource : public ByteSource {
 public:
  explicit TextSource(std::string text) : text_(std::move(text)) {}
  std::size_t Read(std::span<char> buffer) override {
    const std::size_t count = std::min({buffer.size(), text_.size() - at_, std::size_t{7}});
    std::ranges::copy_n(text_.begin() + static_cast<std::ptrdiff_t>(at_), static_cast<std::ptrdiff_t>(count),
                        buffer.begin());
    at_ += count;
    return count;
  }

 private:
  std::string text_;
  std::size_t at_ = 0;
};

// Its "waitshow" returns when the test lets it.
class SlowHost : public FakeHost {
 public:
  SlowHost()
      : FakeHost({{"waitshow", R"({"success":true,"result":true})"},
                  {"back", R"({"success":true,"result":true})"},
                  {"refresh", R"({"success":true,"result":true})"}}) {}
  std::optional<std::string> Call(const std::string& command, const std::string& parameters) override {
    if (command == "waitshow") let_go.wait();
    if (command == "refresh") refreshed = true;
    return FakeHost::Call(command, parameters);
  }

  std::latch let_go{1};
  std::atomic<bool> refreshed = false;
};

ServerSettings Settings() {
  ServerSettings settings;
  settings.version = "1.2.3";
  settings.code_page = 1252;
  settings.decode = [](std::string_view bytes) { return bytes == "\xE9" ? "é" : std::string(bytes); };
  return settings;
}

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = text.find('\n', at);
    lines.push_back(text.substr(at, end - at));
    at = end + 1;
  }
  return lines;
}

// The answers, without the hello; the times are taken out.
std::vector<std::string> Serve(const std::string& input, CommandHost& host,
                               const ServerSettings& settings = Settings(), std::size_t limit = 1000) {
  TextSource source(input);
  LineInput lines(source, limit);
  TextBuffer out;
  CallThread calls(host, [](const Call&) {});
  Server(lines, out, host, calls, settings).Run();
  std::vector<std::string> answers = Lines(out.text);
  answers.erase(answers.begin());
  for (std::string& answer : answers) {
    const std::size_t start = answer.find(",\"ms\":");
    if (start != std::string::npos) answer.erase(start, answer.find_first_of(",}", start + 1) - start);
  }
  return answers;
}

TEST(Server, SaysHelloWithWhatTheLibraryHas) {
  FakeHost host({{"click", std::nullopt}, {"back", std::nullopt}});
  TextSource source("");
  LineInput lines(source, 1000);
  TextBuffer out;
  CallThread calls(host, [](const Call&) {});
  Server(lines, out, host, calls, Settings()).Run();
  EXPECT_EQ(out.text, R"({"hello":"quillmate","version":"1.2.3","protocol":1,"code-page":1252,)"
                      R"("commands":{"back":[],"click":["target","manual-click"]}})"
                      "\n");
}

TEST(Server, AnswersEachRequestInALine) {
  FakeHost host({{"gettext", "{\"success\":true,\"result\":\"\xE9\"}"},
                 {"gettable", R"({"success":true,"result":"[\n\t[0],\n\t[\"é\"]]"})"},
                 {"getcontrolinfo", R"({"success":true,"result":{"x":1}})"},
                 {"click", R"({"success":false,"result":0,"log":"Element not found!"})"},
                 {"quit", std::nullopt},
                 {"back", "oops"}});
  struct Row {
    std::string request, answer;
  };
  const std::vector<Row> rows = {
      {R"({"id":7,"command":"gettext","target":"id=a"})", R"({"id":7,"success":true,"result":"é","log":""})"},
      {R"({"command":"gettable","by":"id=t","id":"a"})",
       R"({"id":"a","success":true,"result":[[0],["é"]],"log":""})"},
      {R"({"command":"getcontrolinfo"})", R"({"id":null,"success":true,"result":{"x":1},"log":""})"},
      {R"({"id":[1,{}],"command":"click"})",
       R"({"id":[1,{}],"success":false,"result":0,"log":"Element not found!"})"},
      {R"({"command":"quit"})",
       R"({"id":null,"success":false,"result":0,"log":"the library answered a null pointer"})"},
      {R"({"command":"back"})",
       R"({"id":null,"success":false,"result":0,"log":"the answer is no envelope: oops"})"},
  };
  std::string input = "\xEF\xBB\xBF";
  for (const Row& row : rows) input += row.request + "\r\n \n";
  const std::vector<std::string> answers = Serve(input, host);
  ASSERT_EQ(answers.size(), rows.size());
  for (std::size_t i = 0; i < rows.size(); ++i) EXPECT_EQ(answers[i], rows[i].answer);
}

TEST(Server, RefusesBadRequestsWithPlaceAndReasonAndGoesOn) {
  FakeHost host(FakeHost::Answers{{"click", R"({"success":true,"result":true})"}});
  struct Row {
    std::string request, answer;
  };
  const std::vector<Row> rows = {
      {"{", R"({"id":null,"success":false,"error":"not valid JSON","line":1,"column":2})"},
      {"[]", R"({"id":null,"success":false,"error":"a request is a JSON object","line":2,"column":1})"},
      {R"({"id":1})",
       R"({"id":1,"success":false,"error":"a request needs a \"command\"","line":3,"column":1})"},
      {R"({"é":"", "command":"click","id":"x"})",
       R"({"id":"x","success":false,"error":"\"click\" has no parameter \"é\"; its parameters are \"target\", )"
       R"(\"manual-click\"","line":4,"column":2})"},
      {R"({"id":2,"command":"clik"})",
       R"({"id":2,"success":false,"error":"the library has no command \"clik\"; is \"click\" meant?",)"
       R"("line":5,"column":19})"},
      {R"({"id":3,"command":"click","target":5})",
       R"({"id":3,"success":false,"error":"\"target\" is no string: every parameter of a command is one",)"
       R"("line":6,"column":36})"},
      {R"({"command":"click","time-out":0.5})",
       R"({"id":null,"success":false,"error":"\"time-out\" is a whole number of milliseconds, from 1 to )"
       R"(86400000","line":7,"column":31})"},
      {"{\"command\":\"\xE9\"}",
       R"({"id":null,"success":false,"error":"not valid UTF-8","line":8,"column":13})"},
      {std::string(5000, 'x'),
       R"({"id":null,"success":false,"error":"the line is too long","line":9,"column":1})"},
      {R"({"id":4,"command":"click"})", R"({"id":4,"success":true,"result":true,"log":""})"},
  };
  std::string input;
  for (const Row& row : rows) input += row.request + "\n";
  input.pop_back();  // a last line needs no line break
  const std::vector<std::string> answers = Serve(input, host);
  ASSERT_EQ(answers.size(), rows.size());
  for (std::size_t i = 0; i < rows.size(); ++i) EXPECT_EQ(answers[i], rows[i].answer) << rows[i].request;
}

TEST(Server, BoundsARequestAndNeverBeginsOneThatIsLate) {
  SlowHost host;
  ServerSettings settings = Settings();
  std::vector<std::string> after;
  settings.after_call = [&](const Step& step, bool) {
    after.push_back(step.command);
    if (step.command == "refresh") host.let_go.count_down();
  };
  const std::vector<std::string> answers = Serve(R"({"id":1,"command":"waitshow","time-out":30}
{"id":2,"command":"refresh","time-out":20}
{"id":3,"command":"back"})",
                                                 host, settings);
  ASSERT_EQ(answers.size(), 3U);
  EXPECT_TRUE(answers[0].starts_with(R"({"id":1,"success":false,"result":0,"log":"no answer within )"));
  EXPECT_TRUE(answers[0].ends_with(R"(ms; the command goes on in the library","timed-out":true})"))
      << answers[0];
  EXPECT_TRUE(answers[1].ends_with(R"(ms: the library is still busy with waitshow","timed-out":true})"))
      << answers[1];
  EXPECT_EQ(answers[2], R"({"id":3,"success":true,"result":true,"log":""})");
  EXPECT_FALSE(host.refreshed);
  EXPECT_EQ(after, (std::vector<std::string>{"waitshow", "refresh", "back"}));
}

TEST(Server, GivesACommandUpSomeTimeAfterTheInputHasEnded) {
  SlowHost host;
  ServerSettings settings = Settings();
  settings.input_ended = [] { return true; };
  settings.patience = milliseconds(30);
  settings.after_call = [&host](const Step&, bool) { host.let_go.count_down(); };
  const std::vector<std::string> answers = Serve(R"({"id":1,"command":"waitshow"})", host, settings);
  ASSERT_EQ(answers.size(), 1U);
  EXPECT_TRUE(answers[0].contains("timed-out")) << answers[0];
}

TEST(Server, EndsWhenNobodyTakesTheAnswers) {
  class ClosedSink : public TextBuffer {
   public:
    bool Good() const override { return Lines(text).size() < 3; }
  };
  FakeHost host(FakeHost::Answers{{"back", R"({"success":true,"result":true})"}});
  TextSource source("{\"command\":\"back\"}\n{\"command\":\"back\"}\n{\"command\":\"back\"}\n");
  LineInput lines(source, 1000);
  ClosedSink out;
  CallThread calls(host, [](const Call&) {});
  Server(lines, out, host, calls, Settings()).Run();
  EXPECT_EQ(Lines(out.text).size(), 3U);
}

TEST(Server, AddsWhereTheFailuresPictureIs) {
  FakeHost host({{"click", R"({"success":false,"result":0,"log":"no"})"},
                 {"back", R"({"success":true,"result":true})"}});
  ServerSettings settings = Settings();
  settings.save_picture = [](const std::string& name, bool ask_library) {
    return std::pair("C:\\" + name, std::string(ask_library ? "asked" : "not asked"));
  };
  const auto answers = Serve("{\"command\":\"back\"}\n{\"command\":\"click\"}", host, settings);
  ASSERT_EQ(answers.size(), 2U);
  EXPECT_EQ(answers[0], R"({"id":null,"success":true,"result":true,"log":""})");
  EXPECT_TRUE(answers[1].ends_with(R"("picture":"C:\\request-2.png","picture-problem":"asked"})"))
      << answers[1];
}

TEST(LineInput, KeepsNothingOfALineThatIsTooLong) {
  TextSource source("ab\r\n" + std::string(100, 'x') + "\n\nlast");
  LineInput lines(source, 10);
  std::string seen;
  while (const auto line = lines.Next())
    seen += std::to_string(line->number) + line->text + (line->too_long ? "!" : "") + ";";
  EXPECT_EQ(seen, "1ab;2!;3;4last;");
}

TEST(OpenedBrowsers, AreTheWindowsOfOpeningCommandsAndOfTheirProcesses) {
  const std::vector<BrowserWindow> before = {{1, 100}};
  OpenedBrowsers opened(before);
  using Windows = std::vector<BrowserWindow>;
  using Processes = std::vector<std::uint32_t>;
  const auto opening = opened.After("open", true, Windows{{1, 100}, {2, 200}, {3, 100}});
  // Window 3 is ours, its process also has a window of someone else's.
  EXPECT_EQ(opening.windows, (Windows{{2, 200}, {3, 100}}));
  EXPECT_EQ(opening.processes, (Processes{200}));
  const auto popup = opened.After("click", true, Windows{{1, 100}, {2, 200}, {3, 100}, {4, 200}, {5, 500}});
  EXPECT_EQ(popup.windows, (Windows{{4, 200}}));
  EXPECT_TRUE(popup.processes.empty());
  // The user's own browser, begun during a click, stays the user's.
  const auto later = opened.After("new_browser", true, Windows{{5, 500}, {6, 500}});
  EXPECT_EQ(later.windows, (Windows{{6, 500}}));
  EXPECT_TRUE(later.processes.empty());
  // An opening command that was given up opens its browser during the next one.
  opened.After("open", false, Windows{});
  EXPECT_EQ(opened.After("gettext", true, Windows{{7, 700}}).processes, (Processes{700}));
  EXPECT_TRUE(opened.After("gettext", true, Windows{{8, 800}}).windows.empty());
}

}  // namespace
}  // namespace quillmate::player
