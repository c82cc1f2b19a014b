// Pages whose thread is in a script: commands wait for those that compute for some seconds, and fail in
// bounded time on those that never come back.
#include <windows.h>
#include <cstdlib>

#include "support/page_test.h"

namespace quillmate::test {
namespace {

class BusyPages : public PageTest {
 protected:
  /// Keeps the selected page's thread in a script, and waits until it has begun.
  /// @param at_end a script that runs when the time is over.
  static void KeepBusy(int ms, const std::string& at_end = "") {
    const std::string script = "setTimeout(function () { var end = Date.now() + " + std::to_string(ms) +
                               "; while (Date.now() < end); " + at_end + " }, 0)";
    ASSERT_TRUE(Call("executescript", {{"value", script}}).success);
    for (int round = 0; round < 100 && Responds(); ++round) Sleep(5);
  }
  static bool Responds() {
    return SendMessageTimeoutW(TheBrowser().Page(), WM_NULL, 0, 0, SMTO_NORMAL, 20, nullptr) != 0;
  }
  static void AwaitCalm() {
    for (int round = 0; round < 1000 && !Responds(); ++round) Sleep(20);
  }
};

Envelope Truth(bool flag) { return {true, flag ? "true" : "false", {}}; }
Envelope Waited(const char* failure) { return {false, "false", failure}; }

const std::string kPage =
    "<!doctype html><title>Busy</title><p id=p title=tip>text</p><ul id=list><li>1<li>2<li>3</ul>"
    "<div id=mask>loading</div><input id=i value=v><button id=b onclick='1'>b</button>"
    "<select id=s><option value=1>one<option value=2>two</select><select id=m multiple><option>a<option>b"
    "</select><table id=t><tr><td>cell</table><a id=endless onclick='for (;;);'>next</a><iframe id=f src='/inner'></iframe>"
    "<div style='height:3000px'></div>";

std::string TemporaryFolder() {
  const char* folder = std::getenv("TEMP");
  return folder != nullptr ? folder : "C:\\";
}

struct Row {
  const char* command;
  Parameters parameters;
  /// How long the page computes; at least longer than the short question of a search over many windows.
  int busy_ms = 1700;
};

const Row kRows[] = {
    {"haselement", {{"target", "id=p"}}, 4200},
    {"haselement", {{"target", "id=none"}}},
    {"haselement", {{"target", "id=p"}, {"check_type", "visible"}}},
    {"iselementexist", {{"target", "id=p"}}},
    {"getelementcount", {{"target", "xpath=//li"}}, 4200},
    {"getelementcount", {{"target", "id=none"}}},
    {"getchildelementcount", {{"target", "id=list"}, {"value", "li"}}},
    {"getelement", {{"target", "id=p"}, {"return", "busy"}}},
    {"waitshow", {{"target", "id=p"}}, 4200},
    {"waitdisappear", {{"target", "id=none"}}},
    {"gettext", {{"target", "xpath=//ul/li[2]"}}, 4200},
    {"getattribute", {{"target", "id=p"}, {"value", "title"}}},
    {"click", {{"target", "id=b"}}, 4200},
    {"click", {{"target", "id=b"}, {"manual-click", "True"}}},
    {"select_m", {{"target", "id=s"}, {"value", "index=1"}}},
    {"deselect", {{"target", "id=m"}, {"value", "index=0"}}},
    {"append", {{"target", "id=i"}, {"value", ""}}},
    {"sendkeystoelement", {{"target", "id=i"}, {"value", "w"}}},
    {"type_m", {{"target", "id=i"}, {"value", "typed"}}},
    {"clear", {{"target", "id=i"}}},
    {"sendkeys", {{"target", "id=i"}, {"value", "x"}}},
    {"executescript", {{"value", "6 * 7"}}},
    {"pagesource", {}},
    {"currenturl", {}},
    {"getcookie", {}},
    {"gettable", {{"by", "id=t"}}},
    {"getcontrolinfo", {{"target", "id=p"}}},
    {"getelementpos", {{"target", "id=p"}, {"area", "center"}}},
    {"scrollintoview", {{"target", "id=p"}}},
    {"scrollto", {{"value", "0,0"}}},
    {"movetoelement", {{"target", "id=p"}}},
    {"selectframe", {{"target", "relative=top"}}},
    {"takeelementshot", {{"target", "id=b"}, {"save-path", TemporaryFolder()}, {"file-name", "busy.png"}}},
    {"selectwindowsize", {{"target", "max"}}},
    {"refresh", {}},
};

TEST_F(BusyPages, CommandsAnswerAsOnACalmPage) {
  Serve("/inner", "<!doctype html><p>inner</p>");
  Show(kPage);
  for (const Row& row : kRows) {
    SCOPED_TRACE(row.command);
    const Envelope calm = Call(row.command, row.parameters);
    EXPECT_TRUE(calm.success) << calm;
    ASSERT_NO_FATAL_FAILURE(KeepBusy(row.busy_ms));
    EXPECT_EQ(Call(row.command, row.parameters), calm);
    AwaitCalm();
  }
}

// The search over many windows gives each a second. What it leaves out stays selected.
TEST_F(BusyPages, ASearchLeavesABusyPageOut) {
  Serve("/inner", "<!doctype html><p>inner</p>");
  Show(kPage);
  ASSERT_NO_FATAL_FAILURE(KeepBusy(4500));
  EXPECT_EQ(Call("selectwindowuntop", {{"target", "title=Busy"}}), Failed("Browser not found!"));
  EXPECT_EQ(Call("gettext", {{"target", "id=p"}}), Answered("text"));
  ASSERT_NO_FATAL_FAILURE(KeepBusy(3000));
  EXPECT_EQ(Call("open", {{"target", Serve("/next", "<!doctype html><p id=p>next</p>")}}), Succeeded());
  EXPECT_EQ(Call("gettext", {{"target", "id=p"}}), Answered("next"));
}

// What stands on a page cannot be seen while the page computes. It has not gone for that.
TEST_F(BusyPages, WaitsSeeWhatTheScriptHasDoneAtItsEnd) {
  Serve("/inner", "<!doctype html><p>inner</p>");
  for (const int ms : {1500, 4500}) {
    Show(kPage);
    KeepBusy(ms, "document.body.removeChild(document.getElementById('mask'))");
    EXPECT_EQ(Call("waitdisappear", {{"target", "id=mask"}}), Succeeded());
    EXPECT_EQ(Call("haselement", {{"target", "id=mask"}}), Truth(false));
    KeepBusy(ms, "document.body.insertAdjacentHTML('beforeend', '<div id=late>late</div>')");
    EXPECT_EQ(Call("waitshow", {{"target", "id=late"}}), Succeeded());
  }
  KeepBusy(3000);
  EXPECT_EQ(Call("waitdisappear", {{"target", "id=p"}}), Waited("Wait element disappear failed!"));
}

// Written last, for the browser is of no use afterwards.
TEST_F(BusyPages, APageThatNeverComesBackFailsWhatIsAsked) {
  Serve("/inner", "<!doctype html><p>inner</p>");
  Show(kPage);
  const std::string absent = "Element not found!";
  const struct {
    const char* command;
    Parameters parameters;
    Envelope answer;
    double limit = 15;
  } rows[] = {
      // The control's own handler is what never comes back: the pages behind it are not read.
      {"gettable", {{"by", "id=t"}, {"target", "id=endless"}}, Failed("Table not found!"), 30},
      {"haselement", {{"target", "id=p"}}, Failed(absent)},
      {"getelementcount", {{"target", "xpath=//li"}}, Failed(absent)},
      {"open", {{"target", "about:blank"}}, Failed("Open new tab failed!")},
      {"refresh", {}, Failed("Refresh Fail!")},
  };
  for (const auto& row : rows) {
    const Timed answer = CallTimed(row.command, row.parameters);
    EXPECT_EQ(answer.envelope, row.answer) << row.command;
    EXPECT_LT(answer.seconds, row.limit) << row.command;
  }
}

}  // namespace
}  // namespace quillmate::test
