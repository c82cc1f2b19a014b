// The questions about Internet Explorer to which nobody knows the answer: the commands that meet them, run
// under each answer that is possible. A command is right under every one of them, or fails with its message.
#include <windows.h>

#include "support/page_test.h"
#include "support/under_test.h"

namespace quillmate::test {
namespace {

const std::string kOld = "";
const std::string kNew = "<!doctype html>";

const std::string kPage = R"(<p class=two>first</p><p class=two>second</p><a name=link>one</a>
<select id=list><option value=v1>opt1</option><option>opt2</option><option value=v3>opt3</option></select>
<textarea id=area>a
b</textarea><input id=field value=written><i id=styled style="color: red"></i>
<button id=off disabled onclick="this.title = 'ran'">off</button><input id=dead disabled><b id=gone>gone</b>
<script>document.getElementById('field').value = 'now';</script>)";

struct Row {
  const char* choice;
  const std::string& mode;
  const char* command;
  const char* target;
  const char* value;
  Envelope answer;
  /// A script that reads what the command did, and what it must read; null for none.
  const char* script = nullptr;
  const char* read = nullptr;
};

class UnknownAnswers : public PageTest {
 protected:
  static void Try(const std::vector<Row>& rows) {
    for (const Row& row : rows) {
      SCOPED_TRACE(std::string(row.choice) + " " + row.mode + row.command + " " + row.target);
      Show(row.mode + kPage);
      ASSERT_TRUE(ChooseAnswer(TheBrowser().Page(), row.choice));
      EXPECT_EQ(Call(row.command, {{"target", row.target}, {"value", row.value}}), row.answer);
      if (row.script == nullptr) continue;
      EXPECT_EQ(Script(row.script), row.read);
    }
    ASSERT_TRUE(ChooseAnswer(TheBrowser().Page(), rows.back().choice)) << "the default comes last";
  }
};

TEST_F(UnknownAnswers, EvalOfAWindow) {
  const Envelope done = Answered("42");
  Try({{"eval=absent", kNew, "executescript", "", "6 * 7", done},
       {"eval=absent", kOld, "executescript", "", "6 * 7", done},
       {"eval=refused", kNew, "executescript", "", "6 * 7", done},
       {"eval=refused", kOld, "executescript", "", "6 * 7", done},
       {"eval=refused", kNew, "executescript", "", "missing()", Failed("Execute script failed!")},
       {"eval=there", kNew, "executescript", "", "6 * 7", done},
       {"eval=there", kOld, "executescript", "", "6 * 7", done},
       {"eval=assigned", kNew, "executescript", "", "6 * 7", done},
       {"eval=assigned", kOld, "executescript", "", "6 * 7", done}});
}

TEST_F(UnknownAnswers, ClassSearchInOldModes) {
  Try({{"class-search=absent", kOld, "gettext", "class=two", "", Failed("Element not found!")},
       {"class-search=absent", kNew, "gettext", "class=two", "", Answered("first")},
       {"class-search=there", kOld, "gettext", "class=two", "", Answered("first")}});
}

TEST_F(UnknownAnswers, ItemsBeforeTheFirst) {
  const Envelope none = Failed("Find element failed in 1's Xpath node [ //p[0] ]!");
  Try({{"negative-item=null", kOld, "gettext", "xpath=//p[0]", "", none},
       {"negative-item=null", kOld, "gettext", "name=link[0]", "", Failed("Element not found!")},
       {"negative-item=refused", kNew, "gettext", "xpath=//p[0]", "", none},
       {"negative-item=refused", kNew, "gettext", "name=link[0]", "", Failed("Element not found!")},
       {"negative-item=by-mode", kNew, "gettext", "xpath=//p[2]", "", Answered("second")}});
}

TEST_F(UnknownAnswers, ValuesOfOptionsWithoutOne) {
  const char* index = "document.getElementById('list').selectedIndex";
  Try({{"option-value=text", kOld, "select_m", "id=list", "value=opt2", Succeeded(), index, "1"},
       {"option-value=by-mode", kOld, "select_m", "id=list", "value=opt2", Failed("Target option not found!"),
        index, "0"},
       {"option-value=by-mode", kNew, "select_m", "id=list", "value=opt2", Succeeded(), index, "1"}});
}

// The list's own value is what counts.
TEST_F(UnknownAnswers, TheValueAttributeOfAList) {
  const char* index = "document.getElementById('list').selectedIndex";
  for (const char* choice :
       {"select-value-attribute=selects", "select-value-attribute=plain", "select-value-attribute=by-mode"}) {
    Try({{choice, kOld, "sendkeystoelement", "id=list", "v3", Succeeded(), index, "2"},
         {choice, kNew, "sendkeystoelement", "id=list", "v3", Succeeded(), index, "2"}});
  }
}

TEST_F(UnknownAnswers, LineEndsOfATextArea) {
  const char* value = "document.getElementById('area').value.replace(/\\n/g, '|')";
  Try({{"textarea-lines=windows", kNew, "append", "id=area", " c", Succeeded(), value, "a|b c"},
       {"textarea-lines=plain", kNew, "append", "id=area", " c", Succeeded(), value, "a|b c"}});
}

TEST_F(UnknownAnswers, TheWrittenValueOfAField) {
  Try({{"literal-value=current", kOld, "getattribute", "id=field", "value", Answered("now")},
       {"literal-value=source", kOld, "getattribute", "id=field", "value", Answered("written")}});
}

TEST_F(UnknownAnswers, StylesAsTheyAreWritten) {
  Try({{"literal-style=text", kOld, "getattribute", "id=styled", "style", Answered("color: red")},
       {"literal-style=object", kOld, "getattribute", "id=styled", "style", Answered("color: red;")}});
}

// What is typed is shown whatever the attribute does.
TEST_F(UnknownAnswers, TheValueAttributeOfATextArea) {
  const char* value = "document.getElementById('area').value";
  for (const char* choice :
       {"area-value-attribute=plain", "area-value-attribute=shown", "area-value-attribute=by-mode"}) {
    Try({{choice, kOld, "type_m", "id=area", "new", Succeeded(), value, "new"},
         {choice, kNew, "type_m", "id=area", "new", Succeeded(), value, "new"}});
  }
}

TEST_F(UnknownAnswers, ClicksOfADisabledControl) {
  const char* title = "document.getElementById('off').title";
  Try({{"disabled-click=refused", kNew, "click", "id=off", "", Failed("Click failed!"), title, ""},
       {"disabled-click=runs", kNew, "click", "id=off", "", Answered(""), title, "ran"},
       {"disabled-click=quiet", kNew, "click", "id=off", "", Answered(""), title, ""}});
}

// Keys go to whatever has the focus then, as they would from a user's hand, and not into the control.
TEST_F(UnknownAnswers, TheFocusOfAControlThatCannotTakeIt) {
  const char* value = "document.getElementById('dead').value";
  Try({{"hidden-focus=refused", kNew, "sendkeys", "id=dead", "x", Succeeded(), value, ""},
       {"hidden-focus=quiet", kNew, "sendkeys", "id=dead", "x", Succeeded(), value, ""}});
}

TEST_F(UnknownAnswers, TheStyleOfAnElementThatLeft) {
  for (const char* choice : {"detached-style=refused", "detached-style=null"}) {
    SCOPED_TRACE(choice);
    Show(kNew + kPage);
    ASSERT_TRUE(ChooseAnswer(TheBrowser().Page(), choice));
    ASSERT_EQ(Call("getelement", {{"target", "id=gone"}, {"return", "id=kept"}}), Succeeded());
    Script("document.getElementById('gone').remove(); 0");
    EXPECT_EQ(Call("waitdisappear", {{"target", "id=kept"}, {"check_type", "visible"}}), Succeeded());
  }
}

TEST_F(UnknownAnswers, AreNamedOrRefused) {
  for (const char* choice : {"eval", "eval=", "eval=perhaps", "nothing=absent"}) {
    EXPECT_FALSE(ChooseAnswer(TheBrowser().Page(), choice)) << choice;
  }
}

}  // namespace
}  // namespace quillmate::test
