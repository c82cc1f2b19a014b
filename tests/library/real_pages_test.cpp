// Pages made with real front-end libraries: drags of both kinds, a calendar, a validated form. Each
// page writes down what reached it.
#include <windows.h>
#include <gtest/gtest.h>
#include <string>

#include "com/json.h"
#include "support/browser.h"
#include "support/library.h"

namespace quillmate::test {
namespace {

using quillmate::com::JsonPtr;

std::string Script(const std::string& expression) {
  const Envelope answer = Call("executescript", {{"value", expression}});
  const JsonPtr text(cJSON_Parse(answer.result.c_str()));
  return cJSON_IsString(text.get()) ? text->valuestring : "";
}

// Input arrives at the page when the engine gets to it, so what it recorded is asked for until it is there.
std::string RecordedOnce(const std::string& expected) {
  std::string recorded;
  for (int round = 0; round < 50; ++round) {
    recorded = Script("window.recorded.join('; ')");
    if (recorded == expected) break;
    Sleep(100);
  }
  return recorded;
}

// The tests share a browser: starting one is what costs.
class RealPage : public testing::Test {
 protected:
  static void SetUpTestSuite() { ASSERT_EQ(Call("new_browser"), Succeeded()); }
  static void TearDownTestSuite() { Call("quit"); }

  static void Open(const std::string& name) {
    ASSERT_EQ(Call("open", {{"target", FilePage("real/" + name)}}), Succeeded());
    const std::string ready = "String(window.ready === true && location.href.indexOf('" + name + "') > 0)";
    for (int round = 0; round < 100 && Script(ready) != "true"; ++round) Sleep(100);
    ASSERT_EQ(Script(ready), "true");
  }
};

// Step by step: the library gets to work in timers of its own, and the pointer has to stay until it has seen
// it.
void DragSlowly(const std::string& source, const std::string& destination) {
  EXPECT_EQ(Call("clickandhold", {{"target", source}}), Succeeded());
  EXPECT_EQ(Call("movetoelement", {{"target", destination}}), Succeeded());
  for (const char* step : {"0,3", "0,-3"}) {
    Sleep(300);
    EXPECT_EQ(Call("movebyoffset", {{"value", step}}), Succeeded());
  }
  Sleep(300);
  EXPECT_EQ(Call("release", {{"target", destination}}), Succeeded());
}

TEST_F(RealPage, DragsBetweenListsByDragAndDropAndByMouseEvents) {
  Open("drag.html");
  DragSlowly("id=a", "id=d");
  const std::string native = "a todo -> done";
  EXPECT_EQ(RecordedOnce(native), native);
  DragSlowly("id=ma", "id=md");
  const std::string both = native + "; ma mousetodo -> mousedone";
  EXPECT_EQ(RecordedOnce(both), both);
}

TEST_F(RealPage, PicksADayInACalendarAndTypesOne) {
  Open("date.html");
  EXPECT_EQ(Call("click", {{"target", "id=when"}, {"manual-click", "True"}}), Succeeded());
  EXPECT_EQ(RecordedOnce("open"), "open");
  EXPECT_EQ(
      Call("click", {{"target", "xpath=//span[@aria-label='March 17, 2026']"}, {"manual-click", "True"}}),
      Succeeded());
  EXPECT_EQ(RecordedOnce("open; close; when 2026-03-17"), "open; close; when 2026-03-17");
  EXPECT_EQ(Call("type_m", {{"target", "id=typed"}, {"value", "2026-04-01"}}), Succeeded());
  EXPECT_EQ(Call("sendkeys", {{"target", "id=typed"}, {"value", "{ENTER}"}}), Succeeded());
  EXPECT_EQ(RecordedOnce("open; close; when 2026-03-17; typed 2026-04-01"),
            "open; close; when 2026-03-17; typed 2026-04-01");
}

TEST_F(RealPage, FillsAFormUntilItsValidationLetsItPass) {
  Open("form.html");
  EXPECT_EQ(Call("click", {{"target", "id=send"}}), Answered(""));
  EXPECT_EQ(RecordedOnce("refused 4"), "refused 4");
  EXPECT_EQ(Call("gettext", {{"target", "id=user-error"}}), Answered("This field is required."));
  EXPECT_EQ(Call("type_m", {{"target", "id=user"}, {"value", "ada"}}), Succeeded());
  EXPECT_EQ(Call("type_m", {{"target", "id=email"}, {"value", "ada@winter"}}), Succeeded());
  EXPECT_EQ(Call("append", {{"target", "id=email"}, {"value", ".example"}}), Succeeded());
  EXPECT_EQ(Call("select_m", {{"target", "id=plan"}, {"value", "label=Large"}}), Succeeded());
  EXPECT_EQ(Call("click", {{"target", "id=terms"}, {"manual-click", "True"}}), Succeeded());
  EXPECT_EQ(Call("click", {{"target", "id=send"}, {"manual-click", "True"}}), Succeeded());
  const std::string sent = "refused 4; plan l; sent user=ada&email=ada%40winter.example&plan=l&terms=on";
  EXPECT_EQ(RecordedOnce(sent), sent);
}

}  // namespace
}  // namespace quillmate::test
