// The commands that ask for elements and wait for them.
#include <windows.h>

#include "support/page_test.h"

namespace quillmate::test {
namespace {

class Waits : public PageTest {};

const std::string kPage =
    "<!doctype html><ul id=list><li>1<li>2<li>3<ul><li>nested</ul></ul>"
    "<div id=hider style='display:none'><span id=hidden style='display:block'>x</span></div>"
    "<div id=faint style='visibility:hidden;opacity:0;width:0;height:0'></div>";

Envelope Answer(bool flag) { return {true, flag ? "true" : "false", {}}; }
Envelope Count(int count) { return {true, std::to_string(count), {}}; }
Envelope Waited(const char* failure) { return {false, "false", failure}; }

TEST_F(Waits, PresenceAndVisibility) {
  Show(kPage);
  const struct {
    const char* target;
    const char* check_type;
    bool there;
  } rows[] = {
      {"id=list", "", true},         {"id=list", "visible", true},    {"id=none", "", false},
      {"id=hidden", "", true},       {"id=hidden", "visible", false}, {"id=hidden", "Visible", true},
      {"id=faint", "visible", true}, {"xpath=//li[9]", "", false},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.target + std::string(" ") + row.check_type);
    EXPECT_EQ(Call("haselement", {{"target", row.target}, {"check_type", row.check_type}}),
              Answer(row.there));
  }
  EXPECT_EQ(Call("iselementexist", {{"target", "id=hidden"}, {"check_type", "visible"}}), Answer(true));
  EXPECT_EQ(Call("iselementexist", {{"target", "id=none"}}), Answer(false));
}

TEST_F(Waits, CountsMatchesAndDirectChildren) {
  Show(kPage);
  EXPECT_EQ(Call("getelementcount", {{"target", "xpath=//li"}}), Count(4));
  EXPECT_EQ(Call("getelementcount", {{"target", "id='list'"}}), Count(1));
  EXPECT_EQ(Call("getelementcount", {{"target", "class=none"}}), Count(0));
  EXPECT_EQ(Call("getchildelementcount", {{"target", "id=list"}, {"value", "li"}}), Count(3));
  EXPECT_EQ(Call("getchildelementcount", {{"target", "id=list"}, {"value", ""}}), Count(0));
  EXPECT_EQ(Call("getchildelementcount", {{"target", "id=none"}, {"value", std::string(65536, 'x')}}),
            Failed("Element not found!"));
  EXPECT_EQ(Call("getchildelementcount", {{"target", "id=list"}, {"value", std::string(65536, 'x')}}),
            Failed("Parameter verification failed!"));
}

// A name in a locator's form can be used as a target; it names the element, wherever its page went.
TEST_F(Waits, RecallsARememberedElementByANameInALocatorsForm) {
  Show(kPage);
  EXPECT_EQ(Call("getelement", {{"target", "id=list"}, {"return", ""}}), Succeeded());
  EXPECT_EQ(Call("getelement", {{"target", "xpath=//li/nope"}, {"return", "id=x"}}),
            Failed("Find element failed in 2's Xpath node [ /nope[] ]!"));
  EXPECT_EQ(Call("gettext", {{"target", "id=x"}}), Failed("Element not found!"));
  // Remembered for the rest of the process, so no other test may use the name.
  const char* const name = "id=kept item";
  ASSERT_EQ(Call("getelement", {{"target", "xpath=//li[2]"}, {"return", name}}), Succeeded());
  EXPECT_EQ(Call("gettext", {{"target", name}}), Answered("2"));
  ASSERT_EQ(Call("getelement", {{"target", "xpath=//ul/li[3]/ul/li"}, {"return", name}}), Succeeded());
  EXPECT_EQ(Call("gettext", {{"target", name}}), Answered("nested"));
  Show("<!doctype html><ul id='kept item'><li>new</ul>");
  EXPECT_EQ(Call("gettext", {{"target", name}}), Failed("Get text failed!"));
  EXPECT_EQ(Call("gettext", {{"target", "xpath=//*[@id='kept item']/li"}}), Answered("new"));
  ASSERT_EQ(Call("getelement", {{"target", "xpath=//ul"}, {"return", name}}), Succeeded());
  EXPECT_EQ(Call("gettext", {{"target", name}}), Answered("new"));
}

/// Keeps the page's thread for a while, soon.
std::string Busy(int milliseconds) {
  return "setTimeout(function () { " + PageServer::Hold(milliseconds) + " document.title = 'calm' }, 300); 0";
}

// A loading mask of a page that works hard is there for as long as the page is silent.
TEST_F(Waits, ABusyPageIsNoEmptyPage) {
  Show(kPage);
  Script(Busy(2500));
  Timed wait = CallTimed("waitdisappear", {{"target", "id=list"}});
  EXPECT_EQ(wait.envelope, Waited("Wait element disappear failed!"));
  Script(Busy(2500));
  Sleep(600);
  EXPECT_EQ(CallTimed("waitshow", {{"target", "id=list"}}).envelope, Succeeded());
  Script(Busy(2500));
  Sleep(600);
  const Envelope there = Call("haselement", {{"target", "id=list"}});
  EXPECT_TRUE(there == Answer(true) || there == Failed("Element not found!")) << there;
}

TEST_F(Waits, AQuestionToASilentPageFails) {
  const struct {
    const char* command;
    const char* target;
  } rows[] = {{"haselement", "id=list"},
              {"haselement", "id=none"},
              {"iselementexist", "id=list"},
              {"getelementcount", "xpath=//li"},
              {"getchildelementcount", "id=list"}};
  Show(kPage);
  Script("setTimeout(function () { " + PageServer::HoldForEver() + " }, 300); 0");
  Sleep(800);
  for (const auto& row : rows) {
    EXPECT_EQ(Call(row.command, {{"target", row.target}, {"value", "li"}}), Failed("Element not found!"))
        << row.command << " " << row.target;
  }
  RestartBrowser();
}

// It has no computed style: nothing says that it is displayed.
TEST_F(Waits, AnElementOffThePageIsThereButNotDisplayed) {
  Show(kPage);
  const char* const name = "id=taken off";
  ASSERT_EQ(Call("getelement", {{"target", "id=list"}, {"return", name}}), Succeeded());
  EXPECT_EQ(Call("haselement", {{"target", name}, {"check_type", "visible"}}), Answer(true));
  Script("document.body.removeChild(list); 0");
  EXPECT_EQ(Call("haselement", {{"target", name}}), Answer(true));
  EXPECT_EQ(Call("haselement", {{"target", name}, {"check_type", "visible"}}), Answer(false));
}

TEST_F(Waits, SeesWhatComesAndGoesMeanwhile) {
  Show(kPage);
  Script("setTimeout(function () { hider.style.display = 'block' }, 3000); 0");
  Timed shown = CallTimed("waitshow", {{"target", "id=hidden"}, {"check_type", "visible"}});
  EXPECT_EQ(shown.envelope, Succeeded());
  EXPECT_GE(shown.seconds, 2.5);
  EXPECT_LE(shown.seconds, 6);
  Script("setTimeout(function () { hider.parentNode.removeChild(hider) }, 3000); 0");
  Timed gone = CallTimed("waitdisappear", {{"target", "id=hidden"}});
  EXPECT_EQ(gone.envelope, Succeeded());
  EXPECT_GE(gone.seconds, 2.5);
  EXPECT_LE(gone.seconds, 6);
}

TEST_F(Waits, AnswerAtOnceWhenNothingIsToBeWaitedFor) {
  Show(kPage);
  const struct {
    const char* command;
    Parameters parameters;
  } rows[] = {
      {"waitshow", {{"target", "id=hidden"}}},
      {"waitdisappear", {{"target", "id=none"}}},
      {"waitdisappear", {{"target", "id=hidden"}, {"check_type", "visible"}}},
  };
  for (const auto& row : rows) {
    const Timed answer = CallTimed(row.command, row.parameters);
    EXPECT_EQ(answer.envelope, Succeeded()) << row.command;
    EXPECT_LT(answer.seconds, 1) << row.command;
  }
}

TEST_F(Waits, GiveUpAfterTenSeconds) {
  Show(kPage);
  const Timed hidden = CallTimed("waitshow", {{"target", "id=hidden"}, {"check_type", "visible"}});
  EXPECT_EQ(hidden.envelope, Waited("Wait element show failed!"));
  EXPECT_GE(hidden.seconds, 9.9);
  EXPECT_LE(hidden.seconds, 16);
  const Timed present = CallTimed("waitdisappear", {{"target", "id=hidden"}});
  EXPECT_EQ(present.envelope, Waited("Wait element disappear failed!"));
  EXPECT_GE(present.seconds, 9.9);
}

}  // namespace
}  // namespace quillmate::test
