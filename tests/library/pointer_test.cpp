// The pointer commands: where the pointer lands, which events the page sees, and what stays pressed.
#include <windows.h>
#include <cmath>
#include <set>
#include <utility>

#include "support/call_filter.h"
#include "support/import_hook.h"
#include "support/page_test.h"

namespace quillmate::test {
namespace {

std::string PlaceOf(const PageEvent& event) {
  return std::to_string(event.x) + "," + std::to_string(event.y);
}

class Pointer : public PageTest {
 protected:
  void TearDown() override { ReleaseButton(); }

  /// Where the page saw the pointer last, once that is the place wanted, or after three seconds.
  static std::string LastMoveUntil(const std::string& wanted) {
    std::string last;
    for (int round = 0; round < 60 && last != wanted; ++round) {
      if (round > 0) Sleep(50);
      const auto moves = OfType(Events(), "mousemove");
      last = moves.empty() ? "" : PlaceOf(moves.back());
    }
    return last;
  }

  static bool IsButtonDown() { return (GetAsyncKeyState(VK_LBUTTON) & 0x8000) != 0; }
  static void ReleaseButton() {
    if (IsButtonDown()) mouse_event(MOUSEEVENTF_LEFTUP, 0, 0, 0, 0);
  }
};

const std::string kStandards = "<!doctype html><meta charset=utf-8>" + kRecorder;
const std::string kQuirks = kRecorder;
const std::string kBox =
    "<div id=box style='position:absolute;left:100px;top:60px;width:80px;height:40px;background:";

/// The middle of an element in client pixels, as the page itself reckons it.
const char* const kMiddleOfBox =
    "var r = document.getElementById('box').getBoundingClientRect();"
    "Math.floor((r.left + r.right) / 2) + ',' + Math.floor((r.top + r.bottom) / 2)";

TEST_F(Pointer, ManualClickLandsOnTheMiddle) {
  const struct {
    const char* name;
    std::string html;
  } rows[] = {
      {"standards", kStandards + kBox + "red'></div>"},
      {"quirks", kQuirks + kBox + "red'></div>"},
      {"scrolled", kStandards +
                       "<div style='height:3000px'></div><div id=box style='width:80px;height:40px'>x</div>"
                       "<div style='height:3000px'></div><script>scrollTo(0, 2700)</script>"},
      {"border, padding and margin", kStandards + "<body style='margin:31px;border:9px solid;padding:13px'>"
                                                  "<button id=box style='width:80px;height:40px'>x</button>"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Show(row.html);
    const std::string middle = Script(kMiddleOfBox);
    ASSERT_EQ(Call("click", {{"target", "id=box"}, {"manual-click", "True"}}), Succeeded());
    const auto clicks = OfType(EventsUntil("click"), "click");
    ASSERT_EQ(clicks.size(), 1u);
    EXPECT_EQ(PlaceOf(clicks[0]), middle);
    EXPECT_EQ(clicks[0].target, "box");
    EXPECT_TRUE(clicks[0].trusted);
  }
}

TEST_F(Pointer, ManualClickLandsOnTheMiddleThroughTwoScrolledFrames) {
  const std::string filler = "<div style='width:2000px;height:3000px'></div>";
  for (const std::string& layout : {std::string("<!doctype html>"), std::string()}) {
    SCOPED_TRACE(layout.empty() ? "quirks" : "standards");
    Serve("/inner", layout + kRecorder + kBox + "red'></div>" + filler + "<script>scrollTo(20, 30)</script>");
    Serve("/outer",
          layout +
              "<iframe id=inner src=/inner style='position:absolute;left:33px;top:500px;width:300px;"
              "height:200px;border:3px solid;padding:4px'></iframe>" +
              filler + "<script>scrollTo(10, 450)</script>");
    Show(layout +
         "<iframe id=outer src=/outer style='position:absolute;left:77px;top:1500px;width:500px;height:300px;"
         "border:11px solid;padding:6px'></iframe>" +
         filler + "<script>scrollTo(5, 1400)</script>");
    ASSERT_EQ(Call("selectframe", {{"target", "id=outer"}}), Succeeded());
    ASSERT_EQ(Call("selectframe", {{"target", "id=inner"}}), Succeeded());
    const std::string middle = Script(kMiddleOfBox);
    ASSERT_EQ(Call("click", {{"target", "id=box"}, {"manual-click", "True"}}), Succeeded());
    const auto clicks = OfType(EventsUntil("click"), "click");
    ASSERT_EQ(clicks.size(), 1u);
    EXPECT_EQ(PlaceOf(clicks[0]), middle);
    EXPECT_EQ(clicks[0].target, "box");
  }
}

TEST_F(Pointer, ButtonsRaiseTheEventsOfARealMouse) {
  const struct {
    const char* command;
    const char* last;
    const char* types;
  } rows[] = {
      {"clickandhold", "mousedown", "mousedown"},
      {"release", "mouseup", "mouseup click"},
      {"doubleclick", "dblclick", "mousedown mouseup click mousedown mouseup click dblclick"},
      {"rightclick", "contextmenu", "mousedown mouseup contextmenu"},
  };
  Show(kStandards + kBox + "red'></div>");
  for (const auto& row : rows) {
    SCOPED_TRACE(row.command);
    Script("seen = []; 0");
    Sleep(GetDoubleClickTime());  // within it a press would be the second of a double click
    EXPECT_EQ(Call(row.command, {{"target", "id=box"}}), Succeeded());
    const auto events = EventsUntil(row.last);
    EXPECT_EQ(TypesOf(events), row.types);
    for (const PageEvent& event : events) EXPECT_TRUE(event.trusted) << event.type;
  }
}

// Clicks that follow each other within the system's time would make the double click's press a third one.
TEST_F(Pointer, ADoubleClickStaysDoubleAfterAnyClick) {
  Show(kStandards + kBox + "red'></div>");
  for (const char* before : {"click", "doubleclick", "clickandhold"}) {
    SCOPED_TRACE(before);
    Sleep(GetDoubleClickTime() + 50);
    EXPECT_EQ(Call(before, {{"target", "id=box"}, {"manual-click", "True"}}), Succeeded());
    if (IsButtonDown()) {
      EXPECT_EQ(Call("release", {{"target", "id=box"}}), Succeeded());
    }
    Script("seen = []; 0");
    EXPECT_EQ(Call("doubleclick", {{"target", "id=box"}}), Succeeded());
    EXPECT_EQ(TypesOf(EventsUntil("dblclick")), "mousedown mouseup click mousedown mouseup click dblclick");
  }
}

// What a command's last event does to the page is done when the command returns.
TEST_F(Pointer, TheNextCommandFindsTheInputTaken) {
  Show(kStandards + "<style>*{user-select:none}</style>" + kBox + "red'></div><input id=field>");
  const struct {
    const char* command;
    Parameters parameters;
    const char* last;
  } rows[] = {
      {"click", {{"target", "id=box"}, {"manual-click", "True"}}, "click"},
      {"draganddropbyoffset", {{"target", "id=box"}, {"value", "60,30"}}, "mouseup"},
      {"rightclick", {{"target", "id=box"}}, "contextmenu"},
      {"doubleclick", {{"target", "id=box"}}, "dblclick"},
      {"sendkeys", {{"target", "id=field"}, {"value", "x"}}, "keyup"},
      {"movetoelement", {{"target", "id=field"}}, "mousemove"},
  };
  for (int round = 0; round < 2; ++round) {
    for (const auto& row : rows) {
      Script("seen = []; 0");
      ASSERT_EQ(Call(row.command, row.parameters), Succeeded());
      EXPECT_FALSE(OfType(Events(), row.last).empty()) << row.command << " in round " << round;
    }
  }
}

TEST_F(Pointer, HeldButtonStaysDownUntilReleased) {
  Show(kStandards + kBox + "red'></div>");
  EXPECT_EQ(Call("clickandhold", {{"target", "id=box"}}), Succeeded());
  EXPECT_TRUE(IsButtonDown());
  EXPECT_EQ(Call("release", {{"target", "id=box"}}), Succeeded());
  EXPECT_FALSE(IsButtonDown());
}

const std::string kFarBelow = "<div style='height:3000px'></div>";

TEST_F(Pointer, AimsAtTheMiddleFromBeforeTheScroll) {
  Show(kStandards +
       "<style>body{margin:0}</style><div id=low style='position:absolute;left:200px;width:40px'></div>" +
       kFarBelow);
  // The element's middle is just inside the view, its lower edge outside.
  Script("low.style.top = innerHeight - 60 + 'px'; low.style.height = '100px'; 0");
  const std::string middle = Script("'220,' + (innerHeight - 10)");
  ASSERT_EQ(Call("clickandhold", {{"target", "id=low"}}), Succeeded());
  const auto presses = OfType(EventsUntil("mousedown"), "mousedown");
  ASSERT_EQ(presses.size(), 1u);
  EXPECT_EQ(PlaceOf(presses[0]), middle);
  EXPECT_NE(Script("pageYOffset"), "0");
  ReleaseButton();
  // Now its old middle is outside: scrolled into view, and refused all the same.
  Script("scrollTo(0, 0); low.style.top = innerHeight + 500 + 'px'; 0");
  EXPECT_EQ(Call("clickandhold", {{"target", "id=low"}}),
            Failed("Failed to scroll the element to the view!"));
  EXPECT_NE(Script("pageYOffset"), "0");
  EXPECT_FALSE(IsButtonDown());
}

TEST_F(Pointer, FailedDragKeepsTheButtonDown) {
  Show(kStandards + kBox + "red'></div>" + kFarBelow + "<div id=below style='height:40px'>below</div>");
  EXPECT_EQ(Call("draganddrop", {{"target", "id=box"}, {"value", "id=below"}}),
            Failed("Drag and drop failed!"));
  EXPECT_TRUE(IsButtonDown());
  EXPECT_EQ(TypesOf(EventsUntil("mousedown")), "mousedown");
}

TEST_F(Pointer, DragsByMouseEventsAlongASteppedPath) {
  // Selected text would be dragged away instead.
  Show(kStandards + "<style>*{user-select:none}</style>" + kBox +
       "red'></div><div id=hole style='position:absolute;left:500px;top:300px;width:100px;height:100px;"
       "background:blue'></div>");
  const struct {
    const char* command;
    Parameters parameters;
    const char* end;
  } rows[] = {
      {"draganddrop", {{"target", "id=box"}, {"value", "id=hole"}}, "550,350"},
      {"draganddropforhtml5", {{"target", "id=box"}, {"value", "id=hole"}}, "550,350"},
      {"draganddropbyoffset", {{"target", "id=box"}, {"value", "200,-50"}}, "340,30"},
      {"dragdrop", {{"target", "id=box"}, {"dest-type", "pos"}, {"dest-pos", "0,90"}}, "140,170"},
      {"dragdrop", {{"target", "id=box"}, {"dest-type", "element"}, {"dest-element", "id=hole"}}, "550,350"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.command);
    Script("seen = []; 0");
    ASSERT_EQ(Call(row.command, row.parameters), Succeeded());
    const auto events = EventsUntil("mouseup");
    const auto presses = OfType(events, "mousedown");
    const auto releases = OfType(events, "mouseup");
    ASSERT_EQ(presses.size(), 1u);
    ASSERT_EQ(releases.size(), 1u);
    EXPECT_EQ(PlaceOf(presses[0]), "140,80");
    EXPECT_EQ(PlaceOf(releases[0]), row.end);
    EXPECT_GT(OfType(events, "mousemove").size(), 3u) << "the engine joins the moves of a frame";
    EXPECT_FALSE(IsButtonDown());
  }
}

TEST_F(Pointer, DragsADraggableElementOntoADropTarget) {
  Show(kStandards +
       "<div id=box draggable=true style='position:absolute;left:100px;top:60px;width:80px;height:40px;" +
       "background:red'>drag</div><div id=hole "
       "style='position:absolute;left:500px;top:300px;width:100px;height:100px;" +
       "background:blue'></div><script>box.ondragstart = function (e) { e.dataTransfer.setData('text', "
       "'load') };" +
       "hole.ondragover = function (e) { e.preventDefault() };" +
       "hole.ondrop = function (e) { e.preventDefault(); hole.textContent = e.dataTransfer.getData('text') "
       "}</script>");
  ASSERT_EQ(Call("draganddropforhtml5", {{"target", "id=box"}, {"value", "id=hole"}}), Succeeded());
  const auto drops = OfType(EventsUntil("drop"), "drop");
  ASSERT_EQ(drops.size(), 1u);
  EXPECT_EQ(drops[0].target, "hole");
  EXPECT_TRUE(drops[0].trusted);
  EXPECT_EQ(Script("hole.textContent"), "load");
}

TEST_F(Pointer, MovesEndExactly) {
  Show(kStandards + kBox + "red'></div>");
  const struct {
    const char* command;
    Parameters parameters;
    const char* end;
  } rows[] = {
      {"movetoelement", {{"target", "id=box"}}, "140,80"},
      {"movetoelementwithoffset", {{"target", "id=box"}, {"value", "300,200"}}, "440,280"},
      {"movebyoffset", {{"value", "-100,20"}}, "340,300"},
      {"move", {{"target", "id=box"}, {"value", "5,5"}}, "145,85"},
      {"move", {{"target", "id=box"}}, "140,80"},
      {"move", {{"value", "60,0"}}, "200,80"},
  };
  POINT before;
  POINT after;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.command);
    Script("seen = []; 0");
    ASSERT_EQ(Call(row.command, row.parameters), Succeeded());
    EXPECT_EQ(LastMoveUntil(row.end), row.end);
  }
  GetCursorPos(&before);
  EXPECT_EQ(Call("move"), Succeeded());
  GetCursorPos(&after);
  EXPECT_EQ(before.x, after.x);
  EXPECT_EQ(before.y, after.y);
}

TEST_F(Pointer, MovesToAnElementThatMustBeScrolledIntoView) {
  Show(kStandards + kFarBelow + "<div id=box style='width:80px;height:40px'>below</div>" + kFarBelow);
  ASSERT_EQ(Call("movetoelement", {{"target", "id=box"}}), Succeeded());
  const std::string middle = Script(kMiddleOfBox);
  EXPECT_EQ(LastMoveUntil(middle), middle);
}

BOOL WINAPI RefuseSetCursorPos(int, int) { return FALSE; }
BOOL WINAPI RefuseGetCursorPos(POINT*) { return FALSE; }

// The click's message is another command's, and hosts know it so.
TEST_F(Pointer, ACursorThatCannotBePlacedFailsBeforeAnyButton) {
  Show(kStandards + kBox + "red'></div>");
  const ImportHook refusal("SetCursorPos", RefuseSetCursorPos);
  ASSERT_TRUE(refusal.IsInForce());
  const struct {
    const char* command;
    Parameters parameters;
    const char* message;
  } rows[] = {
      {"click", {{"target", "id=box"}, {"manual-click", "True"}}, "Double click failed!"},
      {"doubleclick", {{"target", "id=box"}}, "Double click failed!"},
      {"rightclick", {{"target", "id=box"}}, "Right click failed!"},
      {"clickandhold", {{"target", "id=box"}}, "Click and hold failed!"},
      {"release", {{"target", "id=box"}}, "Release failed!"},
      {"draganddrop", {{"target", "id=box"}, {"value", "id=box"}}, "Drag and drop failed!"},
      {"draganddropbyoffset", {{"target", "id=box"}, {"value", "1,2"}}, "Drag and drop failed!"},
  };
  for (const auto& row : rows)
    EXPECT_EQ(Call(row.command, row.parameters), Failed(row.message)) << row.command;
  EXPECT_FALSE(IsButtonDown());
  EXPECT_TRUE(OfType(Events(), "mousedown").empty());
}

TEST_F(Pointer, AMoveFromAnUnknownPlaceFails) {
  Show(kStandards + kBox + "red'></div>");
  const ImportHook refusal("GetCursorPos", RefuseGetCursorPos);
  ASSERT_TRUE(refusal.IsInForce());
  EXPECT_EQ(Call("movebyoffset", {{"value", "3,4"}}), Failed("Get cursor pos failed!"));
  EXPECT_EQ(Call("move", {{"value", "3,4"}}), Failed("Get cursor pos failed!"));
}

/// The messages that a command gives when one of its calls to the page is refused, each call in its turn.
std::set<std::string> MessagesOfRefusals(const CallFilter& filter, const char* command,
                                         Parameters parameters) {
  std::set<std::string> messages;
  Call(command, parameters);
  for (int position = 1; position < 100; ++position) {
    filter.Reset();
    filter.Refuse(position);
    const Envelope answer = Call(command, parameters);
    if (filter.Refused() == 0) break;
    if (!answer.success) messages.insert(answer.log);
  }
  filter.Reset();
  return messages;
}

TEST_F(Pointer, RefusedCallsGiveTheCommandsOwnMessages) {
  const std::string absent = "Element not found!";
  const std::string tab = "Switch tab failed!";
  const std::string unseen = "Failed to scroll the element to the view!";
  const std::string drag = "Drag and drop failed!";
  Show(kStandards + kBox +
       "red'></div><input id=field><div id=pane style='width:50px;height:50px;overflow:auto'>"
       "<div style='height:900px'></div></div>");
  const CallFilter filter(TheBrowser().Page());
  const struct {
    const char* command;
    Parameters parameters;
    std::set<std::string> messages;
  } rows[] = {
      {"clickandhold", {{"target", "id=box"}}, {absent, tab, unseen}},
      {"release", {{"target", "id=box"}}, {absent, tab, unseen}},
      {"doubleclick", {{"target", "id=box"}}, {absent, tab, unseen}},
      {"rightclick", {{"target", "id=box"}}, {absent, tab, unseen}},
      // Measured again after a scroll, these two stand one refusal.
      {"movetoelement", {{"target", "id=box"}}, {absent, tab}},
      {"getelementpos", {{"target", "id=box"}, {"area", "center"}}, {absent}},
      {"movetoelementwithoffset", {{"target", "id=box"}, {"value", "1,1"}}, {absent, tab, unseen}},
      {"draganddrop", {{"target", "id=box"}, {"value", "id=box"}}, {absent, tab, drag}},
      {"draganddropbyoffset", {{"target", "id=box"}, {"value", "9,9"}}, {absent, tab, unseen}},
      {"sendkeys", {{"target", "id=field"}, {"value", "x"}}, {absent, tab, "Send keys failed!"}},
      {"scrollintoview", {{"target", "id=box"}}, {absent, tab, "Scroll into view failed!"}},
      {"scroll", {{"value", "0,1"}}, {"Frame not found!", "Scroll failed!"}},
      {"scrollto", {{"value", "0,1"}, {"target", "id=pane"}}, {"Frame not found!", absent, "Scroll failed!"}},
      {"selectframe", {{"target", "index=0"}}, {"Frame not found!", "Can't find frame by index=0"}},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(MessagesOfRefusals(filter, row.command, row.parameters), row.messages) << row.command;
    ReleaseButton();
  }
}

TEST_F(Pointer, AnswersEveryCheckWithItsMessage) {
  const std::string locator = "Parameter verification failed! The element location mechanism not support.";
  const std::string pair =
      "Parameter verification failed! The value of the coordinate position should be %d,%d.";
  Show(kStandards + kBox + "red'></div>");
  const struct {
    const char* command;
    Parameters parameters;
    std::string message;
  } rows[] = {
      {"clickandhold", {{"target", "css=#box"}}, locator},
      {"release", {{"target", "id=none"}}, "Element not found!"},
      {"doubleclick", {{"target", "xpath=/html/nope"}}, "Find element failed in 2's Xpath node [ /nope[] ]!"},
      {"rightclick", {}, locator},
      {"draganddrop", {{"target", "id=box"}}, locator},
      {"draganddrop", {{"value", "id=box"}}, locator},
      {"draganddrop", {{"target", "id=box"}, {"value", "id=none"}}, "Element not found!"},
      {"draganddropbyoffset", {{"target", "id=box"}, {"value", "1;2"}}, pair},
      {"draganddropbyoffset", {{"target", "box"}, {"value", "1;2"}}, locator},
      {"dragdrop", {{"target", "id=box"}, {"dest-type", "POS"}, {"dest-pos", "1,2"}}, pair},
      {"dragdrop", {{"target", "id=box"}, {"dest-type", "pos"}, {"dest-pos", ""}}, pair},
      {"dragdrop", {{"target", "id=box"}, {"dest-type", "element"}}, locator},
      {"movebyoffset", {}, pair},
      {"movetoelement", {{"target", "id=none"}}, "Element not found!"},
      {"movetoelementwithoffset", {{"target", "box"}, {"value", "x"}}, locator},
      {"movetoelementwithoffset", {{"target", "id=box"}, {"value", "x"}}, pair},
      {"move", {{"target", "box"}, {"value", "x"}}, pair},
      {"move", {{"target", "box"}}, locator},
  };
  for (const auto& row : rows)
    EXPECT_EQ(Call(row.command, row.parameters), Failed(row.message)) << row.command;
  EXPECT_FALSE(IsButtonDown());
  EXPECT_EQ(Call("actionchains"), Succeeded());
  EXPECT_EQ(Call("perform", {{"target", "anything"}}), Succeeded());
}

}  // namespace
}  // namespace quillmate::test
