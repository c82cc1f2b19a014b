// The table command: what it makes of plain tables, split grids and pages of them.
#include "support/page_test.h"

namespace quillmate::test {
namespace {

class Tables : public PageTest {
 protected:
  /// The table's rows as unformatted JSON.
  static std::string Rows(Parameters parameters) {
    const Envelope answer = Call("gettable", parameters);
    EXPECT_TRUE(answer.success) << answer;
    std::string rows = TextOf(answer);
    std::erase_if(rows, [](char c) { return c == '\n' || c == '\t'; });
    for (size_t at; (at = rows.find(", ")) != std::string::npos;) rows.erase(at + 1, 1);
    return rows;
  }
};

const std::string kDoctype = "<!doctype html><meta charset=utf-8>";

TEST_F(Tables, ReadsThePlainTableAroundAnElement) {
  const struct {
    const char* name;
    const char* html;
    const char* by;
    const char* rows;
  } rows[] = {
      {"plain", "<table id=t><tr><th>a<th>b<tr><td>c<td>d<tr><td>e<td>f</table>", "id=t",
       R"([[0,1],["a","b"],["c","d"],["e","f"]])"},
      {"from a cell", "<table><tr><td>a<td id=t><b>b</b></table>", "id=t", R"([[0,1],["a","b"]])"},
      {"head and foot in the engine's order",
       "<table id=t><tfoot><tr><td>foot<tbody><tr><td>body<thead><tr><th>head</table>", "id=t",
       R"([[0],["head"],["body"],["foot"]])"},
      {"spans are one cell each", "<table id=t><tr><td colspan=2>a<tr><td rowspan=2>b<td>c<tr><td>d</table>",
       "id=t", R"([[0],["a"],["b","c"],["d"]])"},
      {"the inner of nested tables", "<table><tr><td>outer<table><tr><td id=t>inner</table></table>", "id=t",
       R"([[0],["inner"]])"},
      {"no rows", "<table id=t></table>", "id=t", "[]"},
      {"a row without cells", "<table id=t><tr></tr><tr><td>x</table>", "id=t", R"([[],["x"]])"},
      {"quotes, breaks and any script", "<table id=t><tr><td>\"q\"<td>a<br>b<td>Ελλ<td>汉<td></table>",
       "id=t", R"([[0,1,2,3,4],["\"q\"","a\r\nb","Ελλ","汉",""]])"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Show(kDoctype + row.html);
    EXPECT_EQ(Rows({{"by", row.by}}), row.rows);
  }
}

TEST_F(Tables, LeavesOutARowWithTooManyCells) {
  Show(kDoctype +
       "<table id=t><tr><td>a<tr id=wide><tr><td>z</table>"
       "<script>document.getElementById('wide').innerHTML = new Array(50002).join('<td>')</script>");
  EXPECT_EQ(Rows({{"by", "id=t"}}), R"([[0],["a"],["z"]])");
}

// Taken off the page, or gone with its document: what was read so far is answered, and the next call finds
// nothing.
TEST_F(Tables, ATableThatGoesWhileItIsReadEndsTheReading) {
  for (const char* end : {"document.body.removeChild(t)", "location = 'about:blank'"}) {
    SCOPED_TRACE(end);
    Show(kDoctype + "<button id=go onclick=\"setTimeout(function () { " + end +
         " }, 400)\">go</button><table id=t></table><script>t.innerHTML = new "
         "Array(61).join('<tr><td>x<td>y')" +
         "</script>");
    ASSERT_TRUE(Call("click", {{"target", "id=go"}}).success);
    EXPECT_TRUE(Rows({{"by", "id=t"}}).starts_with(R"([[0,1],["x","y"],["x","y"])"));
    EXPECT_EQ(Call("gettable", {{"by", "id=t"}}), Failed("Table not found!"));
  }
}

const char* const kGrid =
    "<div class=layui-table-box id=g><div class=layui-table-header><table "
    "class=layui-table><tr><th>Name<th>Age</table>"
    "</div><div class='layui-table-body layui-table-main'><table class=layui-table><tr><td>Ann<td id=cell>1"
    "<tr><td>Bob<td>2</table></div><div class=layui-table-fixed><div class=layui-table-header><table "
    "class=layui-table>"
    "<tr><th>fixed</table></div></div></div>";

TEST_F(Tables, JoinsTheHeadAndBodyOfASplitGrid) {
  Show(kDoctype + kGrid);
  EXPECT_EQ(Rows({{"by", "id=g"}}), R"([["Name","Age"],["Ann","1"],["Bob","2"]])");
  // From inside, the body's own table is the nearest.
  EXPECT_EQ(Rows({{"by", "id=cell"}}), R"([[0,1],["Ann","1"],["Bob","2"]])");
  Show(kDoctype + "<div class='layui-table-box more'>" + kGrid + "</div>");
  EXPECT_EQ(Rows({{"by", "id=g"}}), R"([["Name","Age"],["Ann","1"],["Bob","2"]])");
  Show(kDoctype + "<table id=o><tr><td><div class=layui-table-box><p id=in>no body table</p></div></table>");
  EXPECT_EQ(TextOf(Call("gettable", {{"by", "id=in"}})).substr(0, 1), "[")
      << "the climb goes on past an empty box";
}

const char* const kPager =
    "<table id=t></table><a id=next class=go onclick='turn()'>next</a><script>"
    "var page = 0; function turn() { if (++page == 3) document.getElementById('next').className = "
    "'x-disabled';"
    "document.getElementById('t').innerHTML = '<tr><th>h<tr><td>' + page } turn()</script>";

TEST_F(Tables, TurnsPagesUntilTheControlIsDisabled) {
  Show(kDoctype + kPager);
  EXPECT_EQ(Rows({{"by", "id=t"}, {"target", "id=next"}}), R"([[0],["h"],["1"],["h"],["2"],["h"],["3"]])");
  Show(kDoctype + kPager);
  EXPECT_EQ(Rows({{"by", "id=t"}, {"target", "id=absent"}}), R"([[0],["h"],["1"]])");
}

TEST_F(Tables, APageThatAsksSomethingEndsThePaging) {
  Show(kDoctype + "<table id=t><tr><td>1</table><a id=next onclick='alert(1)'>next</a>");
  EXPECT_EQ(Rows({{"by", "id=t"}, {"target", "id=next"}}), R"([[0],["1"]])");
  EXPECT_EQ(Call("assertalert"), Succeeded());
}

TEST_F(Tables, AnswersEveryCheckWithItsMessage) {
  const std::string locator = "Parameter verification failed! The element location mechanism not support.";
  Show(kDoctype + "<p id=p>no table</p>");
  EXPECT_EQ(Call("gettable", {{"by", "table"}}), Failed(locator));
  EXPECT_EQ(Call("gettable", {{"by", "id=p"}, {"target", "next"}}), Failed(locator));
  EXPECT_EQ(Call("gettable", {{"by", "id=p"}}), Failed("Table not found!"));
  EXPECT_EQ(Call("gettable", {{"by", "id=none"}}), Failed("Table not found!"));
  EXPECT_EQ(Call("gettable"), Failed("Table not found!"));
}

}  // namespace
}  // namespace quillmate::test
