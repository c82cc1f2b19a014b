// The commands that fill in forms: by value and by keys, what the page sees of it, and what stays pressed.
#include <windows.h>

#include "support/page_test.h"

namespace quillmate::test {
namespace {

class Forms : public PageTest {
 protected:
  void TearDown() override {
    for (const int key : {VK_CONTROL, VK_SHIFT, int{'A'}, int{'X'}}) {
      if (IsKeyDown(key)) keybd_event(static_cast<BYTE>(key), 0, KEYEVENTF_KEYUP, 0);
    }
  }
  static bool IsKeyDown(int key) { return (GetAsyncKeyState(key) & 0x8000) != 0; }
  static std::string ValueOf(const std::string& id) {
    return Script("document.getElementById('" + id + "').value");
  }
  /// The key strokes that the page saw, once the last one has arrived; those that only repeat the one before
  /// are left out.
  static std::string StrokesOnce(const std::string& last) {
    std::string strokes;
    for (int round = 0; round < 60 && !strokes.ends_with(last); ++round) {
      strokes.clear();
      std::string before;
      for (const PageEvent& event : Events()) {
        const std::string stroke = event.type + ":" + event.key + " ";
        if (!event.type.starts_with("key") || stroke == before) continue;
        EXPECT_TRUE(event.trusted);
        EXPECT_EQ(event.target, "name");
        strokes += before = stroke;
      }
      if (!strokes.ends_with(last)) Sleep(50);
    }
    return strokes;
  }
};

/// A layout for each of the two document modes: standards, and the one before it in which values are
/// attributes.
const std::string kModes[] = {"<!doctype html>", ""};
const std::string kForm =
    "<meta charset=utf-8>" + kRecorder +
    "<input id=name value=old><textarea id=note>old\nnote</textarea><div id=plain>text</div>"
    "<div id=rich contenteditable=true>rich</div><input id=file type=file>"
    "<div contenteditable=true><select id=list><option value=1>One<option value=2>Two</select></div>";

TEST_F(Forms, TypingReplacesWhatAFieldHolds) {
  for (const std::string& mode : kModes) {
    Show(mode + kForm);
    for (const char* field : {"name", "note"}) {
      SCOPED_TRACE(mode + field);
      const std::string locator = std::string("id=") + field;
      EXPECT_EQ(Call("type_m", {{"target", locator}, {"value", "Grüße & \"mehr\""}}), Succeeded());
      EXPECT_EQ(ValueOf(field),
                "Gr\xFC\xDF"
                "e & \"mehr\"");
      EXPECT_EQ(Call("fasttype", {{"target", locator}, {"value", "two"}}), Succeeded());
      EXPECT_EQ(ValueOf(field), "two");
      EXPECT_EQ(Call("append", {{"target", locator}, {"value", " three"}}), Succeeded());
      EXPECT_EQ(ValueOf(field), "two three");
      EXPECT_EQ(Call("clear", {{"target", locator}}), Succeeded());
      EXPECT_EQ(ValueOf(field), "");
      EXPECT_EQ(Call("sendkeystoelement", {{"target", locator}, {"value", "four"}}), Succeeded());
      EXPECT_EQ(ValueOf(field), "four");
    }
  }
}

TEST_F(Forms, TypingEmptiesTheFieldByKeysFirst) {
  for (const char* command : {"type_m", "clear"}) {
    Show(kModes[0] + kForm);
    ASSERT_EQ(Call(command, {{"target", "id=name"}, {"value", "new"}}), Succeeded());
    EXPECT_EQ(StrokesOnce("keyup:Delete "),
              "keydown:Control keydown:a keyup:a keyup:Control keydown:Delete keyup:Delete ");
  }
}

TEST_F(Forms, TextGoesIntoAnEditableElementAndTheAttributeOfAnyOther) {
  for (const std::string& mode : kModes) {
    Show(mode + kForm);
    const auto text = [] { return Call("gettext", {{"target", "id=rich"}}); };
    EXPECT_EQ(Call("sendkeystoelement", {{"target", "id=rich"}, {"value", "written"}}), Succeeded());
    EXPECT_EQ(text(), Answered("written"));
    EXPECT_EQ(Call("type_m", {{"target", "id=rich"}, {"value", "typed"}}), Succeeded());
    EXPECT_EQ(text(), Answered("typed"));
    EXPECT_EQ(Call("append", {{"target", "id=rich"}, {"value", " on"}}), Succeeded());
    EXPECT_EQ(text(), Answered("typed on"));
    for (const char* command : {"sendkeystoelement", "type_m"}) {
      EXPECT_EQ(Call(command, {{"target", "id=plain"}, {"value", command}}), Succeeded());
      EXPECT_EQ(Call("gettext", {{"target", "id=plain"}}), Answered("text"));
      EXPECT_EQ(Call("getattribute", {{"target", "id=plain"}, {"value", "value"}}), Answered(command));
    }
  }
}

// Only the user can choose a file; of a list only an option that it has.
TEST_F(Forms, TextThatAControlCannotTakeIsAFailure) {
  for (const std::string& mode : kModes) {
    Show(mode + kForm);
    const auto send = [](const char* target, const char* text) {
      return Call("sendkeystoelement", {{"target", target}, {"value", text}});
    };
    EXPECT_EQ(send("id=file", "C:\\a.txt"), Failed("Send keys to element failed!"));
    EXPECT_EQ(send("id=list", "2"), Succeeded());
    EXPECT_EQ(ValueOf("list"), "2");
    EXPECT_EQ(send("id=list", "3"), Failed("Send keys to element failed!"));
    EXPECT_EQ(ValueOf("list"), "2") << "the choice stays";
  }
}

TEST_F(Forms, TypingSetsTheAttributeToo) {
  Show(kModes[0] + kForm);
  ASSERT_EQ(Call("type_m", {{"target", "id=name"}, {"value", "new"}}), Succeeded());
  EXPECT_EQ(Call("getattribute", {{"target", "id=name"}, {"value", "value"}}), Answered("new"));
}

// A handler on the window hears of a change only when the event bubbles, as it does from document mode 9 on.
TEST_F(Forms, ChangesBubbleInNewModes) {
  for (const auto& [mode, heard] : {std::pair(kModes[0], "1"), std::pair(kModes[1], "0")}) {
    Show(mode +
         "<select id=s><option>a<option>b</select><script>heard = 0;"
         "window.addEventListener('change', function () { ++heard })</script>");
    EXPECT_EQ(Call("select_m", {{"target", "id=s"}, {"value", "index=1"}}), Succeeded());
    EXPECT_EQ(Script("heard"), heard);
  }
}

const std::string kLists =
    kRecorder +
    "<select id=one><option id=a value=1>First</option><option value=2> Second \n choice </option>"
    "<optgroup label=more><option id=c value=3>Third</option></optgroup></select>"
    "<select id=many multiple><option value=x selected>X</option><option value=y>Y</option>"
    "</select><p id=text>no list</p>";

TEST_F(Forms, ChoosesOptionsAndTellsThePageOfRealChangesOnly) {
  const struct {
    const char* command;
    const char* target;
    const char* option;
    const char* chosen;
    const char* events;
  } rows[] = {
      {"select_m", "id=one", "value=3", "3", "change"},
      {"select_m", "id=one", "value=3", "3", ""},
      {"select_m", "id=one", "label=Second choice", "2", "change"},
      {"select_m", "id=one", "index=0", "1", "change"},
      {"select_m", "id=c", "value=2", "2", "change"},
      {"select_m", "id=a", "index=2", "3", "change"},
      {"select_m", "id=many", "label=Y", "x,y", "change"},
      {"deselect", "id=many", "value=x", "y", "change"},
      {"deselect", "id=many", "value=x", "y", ""},
  };
  for (const std::string& mode : kModes) {
    Show(mode + kLists);
    for (const auto& row : rows) {
      SCOPED_TRACE(mode + row.command + " " + row.option);
      Script("seen = []; 0");
      EXPECT_EQ(Call(row.command, {{"target", row.target}, {"value", row.option}}), Succeeded());
      const std::string list =
          std::string(row.chosen).find_first_of("xy") == std::string::npos ? "one" : "many";
      EXPECT_EQ(
          Script(
              "var o = document.getElementById('" + list +
              "').options, s = []; for (var i = 0; i < o.length; ++i) if (o[i].selected) s.push(o[i].value);"
              "s.join()"),
          row.chosen);
      EXPECT_EQ(TypesOf(Events()), row.events);
    }
  }
}

TEST_F(Forms, ChangeHandlerWithABoxDoesNotHoldTheHost) {
  Show(kModes[0] + kLists +
       "<script>document.getElementById('one').onchange = function () { alert('sure?') }</script>");
  EXPECT_EQ(Call("select_m", {{"target", "id=one"}, {"value", "value=2"}}), Succeeded());
  ASSERT_TRUE(AwaitBox());
  EXPECT_EQ(Call("assertalert"), Succeeded());
  EXPECT_EQ(ValueOf("one"), "2");
}

TEST_F(Forms, ChangeHandlerThatComputesOnHoldsTheHostForASecondOnly) {
  Show(kModes[0] + kLists +
       "<script>document.getElementById('one').onchange = document.getElementById('many').onchange = "
       "function () { " +
       PageServer::Hold(4000) + " }</script>");
  const struct {
    const char* command;
    const char* target;
    const char* option;
  } rows[] = {{"select_m", "id=one", "value=2"}, {"deselect", "id=many", "value=x"}};
  for (const auto& row : rows) {
    const ULONGLONG begin = GetTickCount64();
    EXPECT_EQ(Call(row.command, {{"target", row.target}, {"value", row.option}}), Succeeded());
    EXPECT_LT(GetTickCount64() - begin, 2500u) << row.command;
    EXPECT_EQ(ValueOf("one"), "2") << "asked until the handler has ended";
  }
}

TEST_F(Forms, AnswersEveryCheckWithItsMessage) {
  const std::string locator = "Parameter verification failed! The element location mechanism not support.";
  const std::string option =
      "Parameter verification failed! The value of the option should be index=number or value/label=%s.";
  const std::string too_long(65536, 'x');
  const std::string path = "xpath=/html/body/nope";
  const std::string not_at_path = "Find element failed in 3's Xpath node [ /nope[] ]!";
  Show(kModes[0] + kLists);
  const struct {
    const char* command;
    Parameters parameters;
    std::string message;
  } rows[] = {
      {"select_m", {{"target", "one"}, {"value", "x"}}, locator},
      {"select_m", {{"target", "id=none"}, {"value", "x"}}, option},
      {"select_m", {{"target", "id=none"}, {"value", "index=0"}}, "Element not found!"},
      {"select_m", {{"target", "id=text"}, {"value", "index=0"}}, "Not dropdown menu element!"},
      {"select_m", {{"target", "id=one"}, {"value", "index=9"}}, "Target option not found!"},
      {"select_m", {{"target", "id=one"}, {"value", "label=second choice"}}, "Target option not found!"},
      {"deselect", {{"target", "id=none"}, {"value", "x"}}, "Element not found!"},
      {"deselect", {{"target", "id=one"}, {"value", "x"}}, option},
      {"type_m", {{"target", "id=none"}, {"value", too_long}}, "Parameter verification failed!"},
      {"type_m", {{"target", path}}, "Element not found!"},
      {"fasttype", {{"target", path}}, "Element not found!"},
      {"clear", {{"target", path}}, "Element not found!"},
      {"getattribute", {{"target", path}, {"value", "id"}}, "Element not found!"},
      {"append", {{"target", path}}, not_at_path},
      {"sendkeystoelement", {{"target", path}}, not_at_path},
      {"gettext", {{"target", path}}, not_at_path},
      {"select_m", {{"target", path}, {"value", "index=0"}}, not_at_path},
      {"append", {{"target", "id=none"}, {"value", "x"}}, "Element not found!"},
      {"clear", {{"target", "id=none"}}, "Element not found!"},
      {"sendkeystoelement", {{"target", "none"}}, locator},
      {"sendkeys", {{"target", "id=text"}, {"value", too_long}}, "Parameter verification failed!"},
      {"sendkeys", {{"target", "id=none"}, {"value", "a"}}, "Element not found!"},
      {"sendkeys", {{"target", "xpath=//div/nope"}, {"value", "a"}}, "Element not found!"},
      {"sendkeys", {{"target", "css=p"}, {"value", too_long}}, locator},
  };
  for (const auto& row : rows)
    EXPECT_EQ(Call(row.command, row.parameters), Failed(row.message)) << row.command;
}

TEST_F(Forms, KeysArriveAsAChordInTheFocusedElement) {
  Show(kModes[0] + kForm);
  ASSERT_EQ(Call("sendkeys", {{"target", "id=name"}, {"value", "{shift}a"}}), Succeeded());
  EXPECT_EQ(StrokesOnce("keyup:Shift "), "keydown:Shift keydown:A keyup:A keyup:Shift ");
  EXPECT_EQ(Call("sendkeys", {{"target", "id=name"}, {"value", ""}}), Succeeded());
}

TEST_F(Forms, KeysBeforeAnUnknownNameStayDown) {
  Show(kModes[0] + kForm);
  EXPECT_EQ(Call("sendkeys", {{"target", "id=name"}, {"value", "{shift}x{nosuchkey}"}}),
            Failed("Send keys failed!"));
  EXPECT_TRUE(IsKeyDown(VK_SHIFT));
  EXPECT_TRUE(IsKeyDown('X'));
}

}  // namespace
}  // namespace quillmate::test
