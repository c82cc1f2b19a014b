// Every command against bad input, with nothing selected: the exact message of each check, and no harm done.
#include <gtest/gtest.h>

#include <windows.h>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include "support/library.h"

namespace {

using namespace quillmate::test;

struct Command {
  const char* name;
  std::vector<const char*> parameters;
};

const std::vector<Command> kCommands = {
#define QUILLMATE_COMMAND(name, function, failure, ...) {#name, {__VA_ARGS__}},
#define QUILLMATE_SAME_COMMAND(name, same, ...) {#name, {__VA_ARGS__}},
#include "command_list.inc"
};

const char kGeneral[] = "Parameter verification failed!";
const char kWindow[] =
    "Parameter verification failed! The window location mechanism is index=number,url/title/xpath=%s. The "
    "value "
    "starts with the preceding four methods to locate the window position. index indicates the sequence "
    "position of "
    "the window (the sequence position refers to the sequence of tab pages in all IE windows), and url "
    "indicates the "
    "page URL of the window, title indicates the page title of the window, and xpath indicates the element "
    "that is "
    "located using the new element locating mechanism.";
const char kElement[] = "Parameter verification failed! The element location mechanism not support.";
const char kFrame[] =
    "Parameter verification failed! The frame location mechanism is index/id/name/src=%s. The window "
    "position is "
    "located by index, id, name, and src, where index=num indicates the sequence position of the window to "
    "be "
    "switched.";
const char kCoordinate[] =
    "Parameter verification failed! The value of the coordinate position should be %d,%d.";
const char kOption[] =
    "Parameter verification failed! The value of the option should be index=number or value/label=%s.";
const char kArea[] = "Parameter verification failed! Area should be left-top|center|right-bottom.";
const char kLocalFile[] = "Parameter verification failed!The local file path does not exist!";

/// What a command without any parameter answers, when that is not kElement. An empty message is a plain
/// success.
const std::map<std::string, std::string> kAnswersToNothing = {
    {"selectwindow", kWindow},
    {"selectwindowuntop", kWindow},
    {"quit", "Frame not found!"},
    {"close", "Frame not found!"},
    {"refresh", "Refresh Fail!"},
    {"forward", "Frame not found!"},
    {"back", "Frame not found!"},
    {"selectwindowsize", "Select window size Fail!"},
    {"currenturl", "Browser not found!"},
    {"selectframe", kFrame},
    {"scroll", kCoordinate},
    {"scrollto", kCoordinate},
    {"executescript", "Frame not found!"},
    {"pagesource", "Frame not found!"},
    {"getcookie", "Frame not found!"},
    {"assertalert", "Assertalert failed"},
    {"chooseokonnextconfirmation", "Choose ok on next confirmation failed!"},
    {"choosecancelonnextconfirmation", "Choose cancel on next confirmation failed!"},
    {"answeronnextprompt", "Answer on next prompt failed!"},
    {"choosecancelonnextprompt", "Choose cancel on next prompt failed!"},
    {"clickonalertdialog", "Click on alert dialog failed!"},
    {"movebyoffset", kCoordinate},
    {"move", ""},
    {"dragdrop", kCoordinate},
    {"actionchains", ""},
    {"perform", ""},
    {"gettable", "Table not found!"},
    {"takescreenshot", "Frame not found!"},
};

/// These start a browser when they are given nothing.
bool StartsBrowser(const std::string& command) { return command == "new_browser" || command == "open"; }

std::string ExpectedFailure(const std::string& log) {
  return "{\n\t\"success\":\tfalse,\n\t\"result\":\t0,\n\t\"log\":\t\"" + log + "\"\n}";
}

std::string ExpectedEnvelope(const std::string& command) {
  const auto found = kAnswersToNothing.find(command);
  const std::string log = found == kAnswersToNothing.end() ? kElement : found->second;
  if (log.empty()) return "{\n\t\"success\":\ttrue,\n\t\"result\":\ttrue\n}";
  return ExpectedFailure(log);
}

/// Texts that hold no parameter, each in another way.
std::vector<std::string> TextsWithoutParameters(const Command& command) {
  std::string numbers = "{\"\":0", objects = "{\"\":0", invalid = "{\"\":0", overlong = "{\"\":0";
  for (const std::string key : command.parameters) {
    numbers += ",\"" + key + "\":5";
    objects += ",\"" + key + "\":{\"" + key + "\":\"id=a\"}";
    invalid += ",\"" + key + "\":\"id=a\xff\"";
    overlong += ",\"" + key + "\":\"id=a\"";
  }
  overlong += ",\"filler\":\"" + std::string(524'280, 'a') + "\"";
  return {"",     "{}",   "[]",           "null",        "5",           "\"id=a\"",    "{\"target\":\"id=a\"",
          "\xff", "\xc3", "\xed\xa0\x80", numbers + "}", objects + "}", invalid + "}", overlong + "}"};
}

TEST(BadInput, TextWithoutParametersIsAnsweredByTheFirstCheck) {
  ASSERT_EQ(kCommands.size(), 61u);
  for (const Command& command : kCommands) {
    if (StartsBrowser(command.name)) continue;
    for (const auto& text : TextsWithoutParameters(command)) {
      const char* answer = CallRaw(command.name, text.c_str());
      ASSERT_NE(answer, nullptr) << command.name;
      EXPECT_EQ(answer, ExpectedEnvelope(command.name)) << command.name << " " << text.substr(0, 60);
    }
    EXPECT_EQ(CallRaw(command.name, nullptr), ExpectedEnvelope(command.name)) << command.name;
  }
}

struct Check {
  const char* command;
  Parameters parameters;
  const char* message;
};

TEST(BadInput, EachCheckHasItsMessage) {
  const std::string long_text(65'536, 'a');
  const std::string long_locator = "id=" + std::string(65'533, 'a');
  const Check checks[] = {
      {"selectwindow", {{"target", "index=-1"}}, kWindow},
      {"selectwindow", {{"target", "url=localhost"}}, kWindow},
      {"selectwindow", {{"target", "title=" + long_text}}, kWindow},
      {"selectwindowuntop", {{"target", "handle="}}, kWindow},
      {"open", {{"target", long_text}}, kGeneral},
      {"open", {{"target", "file:///C:/no/such/page.htm"}, {"by", "nonsense"}}, kLocalFile},
      {"open", {{"target", "file://"}}, kLocalFile},
      {"open", {{"target", "http://127.0.0.1:9/"}, {"by", "_BLANK"}}, kGeneral},
      {"open", {{"target", "file:///C:/windows"}, {"by", "blank"}}, kGeneral},
      {"open", {{"target", "about:blank"}, {"by", "_self"}}, kGeneral},
      {"selectwindowsize", {{"target", "-1,5"}}, "Select window size Fail!"},
      {"selectwindowsize", {{"target", "100"}}, "Select window size Fail!"},
      {"selectwindowsize", {{"target", "99999999999,5"}}, "Select window size Fail!"},
      {"selectframe", {{"target", "relative=self"}}, kFrame},
      {"selectframe", {{"target", "index=01"}}, kFrame},
      {"selectframe", {{"target", "id=" + std::string(65'533, 'a')}}, kFrame},
      {"scroll", {{"value", "1, 2"}}, kCoordinate},
      {"scroll", {{"value", "2147483648,0"}}, kCoordinate},
      {"scrollto", {{"value", "1,2"}, {"target", "css=a"}}, kElement},
      {"getelementpos", {{"target", "id=a"}, {"area", "Center"}}, kArea},
      {"getelement", {{"target", "anchor=a"}, {"return", "a"}}, kElement},
      {"type_m", {{"target", "id=a"}, {"value", long_text}}, kGeneral},
      {"fasttype", {{"target", "id=a"}, {"value", long_text}}, kGeneral},
      {"getattribute", {{"target", "id=a"}, {"value", long_text}}, kGeneral},
      {"sendkeystoelement", {{"target", "id=a"}, {"value", long_text}}, kGeneral},
      {"sendkeys", {{"target", "id=a"}, {"value", long_text}}, kGeneral},
      {"executescript", {{"value", long_text}}, kGeneral},
      {"answeronnextprompt", {{"value", long_text}}, kGeneral},
      {"select_m", {{"target", "id=a"}, {"value", "a"}}, kOption},
      {"select_m", {{"target", "id=a"}, {"value", "index=01"}}, kOption},
      {"movetoelementwithoffset", {{"target", "id=a"}, {"value", "+1,2"}}, kCoordinate},
      {"move", {{"value", "1.5,2"}, {"target", "css=a"}}, kCoordinate},
      {"move", {{"value", ""}, {"target", "css=a"}}, kElement},
      {"draganddrop", {{"target", "id=a"}, {"value", ""}}, kElement},
      {"draganddropforhtml5", {{"target", "id=a"}, {"value", "b"}}, kElement},
      {"draganddropbyoffset", {{"target", "id=a"}, {"value", "05,1"}}, kCoordinate},
      {"dragdrop", {{"target", "id=a"}, {"dest-type", "POS"}, {"dest-pos", "1,2"}}, kCoordinate},
      {"dragdrop", {{"target", "id=a"}, {"dest-type", "pos"}, {"dest-pos", "1"}}, kCoordinate},
      {"dragdrop", {{"target", "a"}, {"dest-type", "pos"}, {"dest-pos", "1,2"}}, kElement},
      {"gettable", {{"by", "a"}}, kElement},
      {"gettable", {{"by", ""}, {"target", "a"}}, kElement},
      {"click", {{"target", long_locator}}, kElement},
      {"click", {{"target", "id=a\nb"}}, kElement},
      {"gettext", {{"target", "ID=a"}}, kElement},
      {"clickonalertdialog", {{"accept", "true"}}, "Click on alert dialog failed!"},
  };
  for (const Check& c : checks) {
    EXPECT_EQ(Call(c.command, c.parameters), Failed(c.message))
        << c.command << " " << c.parameters.begin()->second.substr(0, 40);
  }
}

TEST(BadInput, GoodParametersFindNothingSelected) {
  const Check checks[] = {
      {"selectwindow", {{"target", "title=no such page"}}, "Browser not found!"},
      {"selectframe", {{"target", "index=0"}}, "Frame not found!"},
      {"selectframe", {{"target", "{\"json\": \"text\"}"}}, "Frame not found!"},
      {"scroll", {{"value", "1,2"}}, "Frame not found!"},
      {"scrollto", {{"value", "1,2"}}, "Frame not found!"},
      {"click", {{"target", "id=a"}}, "Element not found!"},
      {"selectwindowsize", {{"target", "max"}}, "Browser not found!"},
      {"getelement", {{"target", "xpath=/html"}, {"return", ""}}, "Element not found!"},
      // Here the element is looked for before the other parameter is read.
      {"getchildelementcount",
       {{"target", "id=a"}, {"value", std::string(65'536, 'a')}},
       "Element not found!"},
      {"waitshow", {{"target", "id=a"}}, "Frame not found!"},
      {"waitdisappear", {{"target", "id=a"}}, "Frame not found!"},
      {"select_m", {{"target", "id=a"}, {"value", "index=0"}}, "Frame not found!"},
      {"type_m", {{"target", "id=a"}, {"value", "a\nb"}}, "Element not found!"},
      {"deselect", {{"target", "id=a"}, {"value", "no selector"}}, "Frame not found!"},
      {"sendkeys", {{"target", "id=a"}, {"value", ""}}, "Element not found!"},
      {"draganddrop", {{"target", "id=a"}, {"value", "id=b"}}, "Element not found!"},
      {"gettext", {{"TARGET", "id='a'"}}, "Element not found!"},
      {"takeelementshot", {{"target", "id=a"}}, "Element not found!"},
      {"getattribute", {{"target", "xpath=//a"}, {"value", "href"}}, "Element not found!"},
  };
  for (const Check& c : checks) EXPECT_EQ(Call(c.command, c.parameters), Failed(c.message)) << c.command;
  EXPECT_EQ(Call("haselement", {{"target", "id=a"}}), (Envelope{true, "false", {}}));
  EXPECT_EQ(Call("getelementcount", {{"target", "id=a"}}), (Envelope{true, "0", {}}));
}

TEST(BadInput, LengthsAreBytesOfTheCodePage) {
  // Two bytes a character in code page 936, one default character ("?") where the code page has no Chinese.
  const size_t width = GetACP() == 936 ? 2 : 1;
  std::string text = "name=";
  for (size_t bytes = text.size(); bytes + width <= 65'535; bytes += width) text += "\xe7\xa1\xae";
  EXPECT_EQ(Call("gettext", {{"target", text}}), Failed("Element not found!"));
  EXPECT_EQ(Call("gettext", {{"target", text + "\xe7\xa1\xae"}}), Failed(kElement));
}

TEST(BadInput, AParameterTextHasItsLongestLength) {
  const std::string begin = R"({"target":"id=a","filler":")";
  const std::string end = "\"}";
  const auto of_length = [&](size_t length) {
    return begin + std::string(length - begin.size() - end.size(), 'x') + end;
  };
  // One unit longer, every parameter reads as empty.
  EXPECT_EQ(CallRaw("gettext", of_length(524'279).c_str()), ExpectedFailure("Element not found!"));
  EXPECT_EQ(CallRaw("gettext", of_length(524'280).c_str()), ExpectedFailure(kElement));
}

TEST(BadInput, AFailureTakesTheFormerOnesPlace) {
  const char* first = CallRaw("click", "{}");
  EXPECT_EQ(CallRaw("gettext", "{}"), first);
}

// The shell's list of browsers starts no browser, so a search ends quickly too.
TEST(BadInput, SearchesForWindowsThatAreNotThereFindNothing) {
  for (const char* target :
       {"index=5000", "title=no such page", "url=http://127.0.0.1:1/none", "handle=0x10", "handle=65552",
        "handle=none", "title='no such page'", "xpath=//nosuchtag", "id=nosuch"}) {
    EXPECT_EQ(Call("selectwindowuntop", {{"target", target}}), Failed("Browser not found!")) << target;
  }
}

// A command that does not wait for another thread's turn answers by its own failure. All ask for one answer: its
// place belongs to the library.
TEST(BadInput, ThreadsTakeTurns) {
  for (const char* command : {"click", "gettext", "getattribute"}) {
    const std::string expected = ExpectedFailure(kElement);
    std::vector<std::thread> threads;
    std::vector<int> others(4);
    for (int& count : others) {
      threads.emplace_back([&] {
        for (int n = 0; n < 100; ++n) count += CallRaw(command, "{}") == expected ? 0 : 1;
      });
    }
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(others, std::vector<int>(4, 0)) << command;
  }
}

}  // namespace
