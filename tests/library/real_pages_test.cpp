// Pages made with real front-end libraries: drags of both kinds, a calendar, a validated form, grids. Each
// page writes down what reached it.
#include <windows.h>
#include <initializer_list>
#include <string>

#include "support/page_test.h"

namespace quillmate::test {
namespace {

class RealPage : public PageTest {
 protected:
  static void Open(const std::string& name) {
    ASSERT_EQ(Call("open", {{"target", FilePage("real/" + name)}}), Succeeded());
    const std::string ready = "String(window.ready === true && location.href.indexOf('" + name + "') > 0)";
    for (int round = 0; round < 100 && Script(ready) != "true"; ++round) Sleep(100);
    ASSERT_EQ(Script(ready), "true");
  }

  // Input arrives at the page when the engine gets to it, so what it recorded is asked for until it is there.
  static std::string RecordedOnce(const std::string& expected) {
    std::string recorded;
    for (int round = 0; round < 50; ++round) {
      recorded = Script("window.recorded.join('; ')");
      if (recorded == expected) break;
      Sleep(100);
    }
    return recorded;
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

/// A row as tests/pages/real/grid.js makes it.
std::string Customer(int id) {
  const char* const towns[] = {"Old Harbour", "Saltmarsh", "\xE5\x8C\x97\xE4\xBA\xAC", "M\xC3\xBCnster"};
  const std::string number = std::to_string(id);
  return "[\"" + number + "\",\"Customer " + number + "\",\"" + towns[id % 4] + "\",\"" +
         std::to_string(id * 37 % 100) + "\"]";
}

const std::string kHeader = R"(["No.","Name","Town","Amount"])";

std::string Customers(std::initializer_list<int> ids) {
  std::string rows = "[" + kHeader;
  for (const int id : ids) rows += "," + Customer(id);
  return rows + "]";
}

// The table command on grids of the layui package, in several of its versions: what is read must be what the grid
// was given.
class LayuiGrid : public PageTest, public testing::WithParamInterface<const char*> {
 protected:
  void SetUp() override {
    ASSERT_EQ(Call("open", {{"target", FilePage(std::string("real/grid-") + GetParam() + ".html")}}),
              Succeeded());
    ASSERT_EQ(Call("waitshow", {{"target", Grid("whole")}}), Succeeded());
  }

  static std::string Grid(const std::string& id) {
    return "xpath=//*[@id='" + id + "']//div[@class='layui-table-box']";
  }

  /// The grid's rows as unformatted JSON.
  static std::string Rows(Parameters parameters) {
    std::string rows = TextOf(Call("gettable", parameters));
    std::erase_if(rows, [](char c) { return c == '\n' || c == '\t'; });
    for (size_t at; (at = rows.find(", ")) != std::string::npos;) rows.erase(at + 1, 1);
    // Newer versions set the sort mark apart with a blank.
    if (const size_t at = rows.find("Amount \""); at != std::string::npos) rows.erase(at + 6, 1);
    return rows;
  }
};

TEST_P(LayuiGrid, ReadsWholeRowsPastTheFixedColumnsAndEveryPage) {
  EXPECT_EQ(Rows({{"by", Grid("paged")}}), Customers({1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
  EXPECT_EQ(Rows({{"by", Grid("paged")}, {"target", "class=layui-laypage-next"}}),
            Customers({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 23}));
  EXPECT_EQ(Script("window.recorded.join('; ')"),
            "paged page 1; whole page 1; empty page 1; paged page 2; paged page 3");
}

TEST_P(LayuiGrid, ReadsRowsInTheOrderShown) {
  EXPECT_EQ(Rows({{"by", Grid("whole")}}), Customers({1, 2, 3, 4}));
  ASSERT_TRUE(Call("click", {{"target", "xpath=//*[@id='whole']//th[4]/div"}}).success);
  EXPECT_EQ(Rows({{"by", Grid("whole")}}), Customers({3, 1, 4, 2}));
}

TEST_P(LayuiGrid, AnEmptyGridIsItsHeaderAlone) { EXPECT_EQ(Rows({{"by", Grid("empty")}}), Customers({})); }

INSTANTIATE_TEST_SUITE_P(Versions, LayuiGrid, testing::Values("2.6", "2.9", "2.13"));

}  // namespace
}  // namespace quillmate::test
