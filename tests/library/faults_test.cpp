// What commands cost in calls to the browser, and what they answer when any one of these calls is refused.
#include <windows.h>
#include <set>

#include "support/call_filter.h"
#include "support/page_test.h"

namespace quillmate::test {
namespace {

using Messages = std::set<std::string>;

struct Row {
  const char* command;
  Parameters parameters;
  /// Calls to another process, releases left out; each is what a command's time is made of. 0 where
  /// another test counts them, or windows and keys have their share in them.
  int calls;
  /// The messages by which a refused call may end the command.
  Messages failures;
  /// A script that undoes what the command does to the page, and one whose value shows that it was done.
  const char* undo = "";
  const char* effect = "0";
  /// Whether the row is tried in a frame too.
  bool in_frame = false;
};

const char kBody[] =
    "<p id=p>text</p><ul class=x><li>1<li>2</ul><i name=n>a</i>"
    "<i name=n>b</i><input id=i value=v><button id=b onclick='++pressed'>b</button>"
    "<select id=s><option>1<option>2</select><select id=m multiple><option>1<option>2</select>"
    "<table id=t><tr><td>1<td>2<tr><td>3<td>4</table><div id=e contenteditable=true>e</div>"
    "<script>pressed = changes = 0; document.onchange = function () { ++changes }</script>";

class Faults : public PageTest {
 protected:
  static Envelope Run(const Row& row) { return Call(row.command, row.parameters); }

  /// Undoes what the row's command has done. @return whether the page took the script.
  static void Undo(const Row& row) {
    if (*row.undo == 0) return;
    ASSERT_EQ(Script(std::string(row.undo) + "; 'undone'"), "undone");
  }

  static void CountCalls(const Row& row, const CallFilter& filter) {
    // The first time, Wine asks a new object for its interfaces.
    Run(row);
    Undo(row);
    filter.Reset();
    const Envelope healthy = Run(row);
    EXPECT_TRUE(healthy.success) << healthy;
    if (row.calls != 0) {
      EXPECT_EQ(filter.Calls(), row.calls);
    }
  }

  /// Refuses each call of the command in turn: it fails by a message of its own, or nothing is missing.
  static void RefuseEachCall(const Row& row, const CallFilter& filter) {
    Undo(row);
    const Envelope healthy = Run(row);
    const std::string done = Script(row.effect);
    for (int position = 1;; ++position) {
      Undo(row);
      filter.Reset();
      filter.Refuse(position);
      const Envelope answer = Run(row);
      const bool refused = filter.Refused() != 0;
      filter.Reset();
      if (!refused) break;
      if (answer.success) {
        EXPECT_EQ(answer, healthy) << "call " << position << " refused";
        EXPECT_EQ(Script(row.effect), done) << "call " << position << " refused";
      } else {
        EXPECT_TRUE(row.failures.contains(answer.log)) << "call " << position << " refused: " << answer;
        seen.insert(answer.log);
      }
      ASSERT_LT(position, 80);
    }
    Undo(row);
    EXPECT_EQ(Run(row), healthy);
  }

  /// The messages given so far.
  static inline Messages seen;
};

const char kNotFound[] = "Element not found!";
const char kNoFrame[] = "Frame not found!";
const char kUnchoose[] = "document.getElementById('s').selectedIndex = 0; changes = 0";
const char kChoice[] = "document.getElementById('s').selectedIndex + ' ' + changes";
const char kChoose[] = "document.getElementById('m').selectedIndex = 1; changes = 0";
const char kChoices[] = "document.getElementById('m').selectedIndex + ' ' + changes";
const char kUnwrite[] =
    "document.getElementById('i').setAttribute('value', 'v'); document.getElementById('i').value = 'v'";
const char kWritten[] =
    "String(document.getElementById('i').value == 'w' || document.getElementById('i').getAttribute('value') == 'w')";
const char kInput[] = "document.getElementById('i').value";
const char kRegion[] = "document.getElementById('e').innerText";
const char kUnwriteRegion[] = "document.getElementById('e').innerText = 'e'";

const Row kRows[] = {
    {"currenturl", {}, 2, {kNoFrame, "Get url failed!"}},
    {"getcookie", {}, 2, {"Current IE tab is NULL!", "Get cookie failed!"}},
    {"pagesource", {}, 3, {kNoFrame}},
    {"executescript",
     {{"value", "1 + 1"}},
     5,
     {kNoFrame, kNotFound, "Get parent window failed!", "Execute script failed!"},
     "",
     "0",
     true},
    {"gettext", {{"target", "id=p"}}, 3, {kNotFound, "Get text failed!"}, "", "0", true},
    {"gettext", {{"target", "name=n[2]"}}, 4, {kNotFound, "Get text failed!"}},
    {"gettext", {{"target", "class=x"}}, 4, {kNotFound, "Get text failed!"}},
    {"gettext",
     {{"target", "xpath=//*[@id='p']"}},
     4,
     {kNotFound, "Find element failed in 1's Xpath node [ //*[@id='p'] ]!", "Get text failed!"}},
    {"getattribute", {{"target", "id=i"}, {"value", "value"}}, 5, {kNotFound, "Get attribute failed!"}},
    {"getelement", {{"target", "id=p"}, {"return", "kept"}}, 2, {kNotFound}},
    {"click", {{"target", "id=b"}}, 4, {kNotFound, "Click failed!"}, "pressed = 0", "pressed", true},
    {"select_m",
     {{"target", "id=s"}, {"value", "index=1"}},
     13,
     {kNoFrame, kNotFound, "Get tagName failed!", "Get option failed!"},
     kUnchoose,
     kChoice,
     true},
    {"select_m",
     {{"target", "id=s"}, {"value", "label=2"}},
     16,
     {kNoFrame, kNotFound, "Get tagName failed!", "Get option failed!"},
     kUnchoose,
     kChoice},
    {"deselect",
     {{"target", "id=m"}, {"value", "index=1"}},
     13,
     {kNoFrame, kNotFound, "Get tagName failed!", "Deselect failed!"},
     kChoose,
     kChoices},
    {"sendkeystoelement",
     {{"target", "id=i"}, {"value", "w"}},
     6,
     {kNotFound, "Send keys to element failed!"},
     kUnwrite,
     kWritten,
     true},
    {"sendkeystoelement",
     {{"target", "id=s"}, {"value", "2"}},
     6,
     {kNotFound, "Send keys to element failed!"},
     kUnchoose,
     "document.getElementById('s').value"},
    {"append",
     {{"target", "id=e"}, {"value", "w"}},
     7,
     {kNotFound, "Failed to add text to the edit box!"},
     kUnwriteRegion,
     kRegion},
    {"type_m",
     {{"target", "id=i"}, {"value", "w"}},
     0,
     {kNotFound, "Switch tab failed!", "Send keys failed!", "Set attribute failed!"},
     kUnwrite,
     kInput},
    {"clear", {{"target", "id=i"}}, 0, {kNotFound, "Failed to clear the edit box!"}, kUnwrite, kInput},
    {"getcontrolinfo", {{"target", "id=i"}}, 17, {kNotFound, "Get elementpos failed!"}},
};

TEST_F(Faults, CommandsCostWhatTheyDidAndFailByAnyCall) {
  Show("<!doctype html><title>Faults</title>" + std::string(kBody));
  const CallFilter filter(TheBrowser().Page());
  for (const Row& row : kRows) {
    SCOPED_TRACE(row.command + std::string(" ") +
                 (row.parameters.size() == 0 ? "" : row.parameters.begin()->second));
    CountCalls(row, filter);
    RefuseEachCall(row, filter);
  }
  for (const char* message :
       {"Get url failed!", "Current IE tab is NULL!", "Get cookie failed!", "Get parent window failed!",
        "Execute script failed!", "Get text failed!", "Get attribute failed!", "Click failed!",
        "Get tagName failed!", "Get option failed!", "Deselect failed!", "Send keys to element failed!",
        "Failed to add text to the edit box!", "Set attribute failed!", "Switch tab failed!",
        "Failed to clear the edit box!"}) {
    EXPECT_TRUE(seen.contains(message)) << message;
  }
}

// The way through a frame is one more that can fail.
TEST_F(Faults, CommandsInAFrameFailByAnyCall) {
  Serve("/frame", "<!doctype html>" + std::string(kBody));
  Show("<!doctype html><iframe src='/frame'></iframe>");
  ASSERT_EQ(Call("selectframe", {{"target", "index=0"}}), Succeeded());
  const CallFilter filter(TheBrowser().Page());
  for (const Row& row : kRows) {
    if (!row.in_frame) continue;
    SCOPED_TRACE(row.command);
    RefuseEachCall(row, filter);
  }
}

}  // namespace
}  // namespace quillmate::test
