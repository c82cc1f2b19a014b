// The table command: what it makes of plain tables, split grids and pages of them.
#include <windows.h>
#include <algorithm>
#include <vector>

#include "support/call_filter.h"
#include "support/page_test.h"

namespace quillmate::test {
namespace {

class Tables : public PageTest {
 protected:
  /// The table's rows as unformatted JSON.
  static std::string Rows(Parameters parameters) {
    const Envelope answer = Call("gettable", parameters);
    EXPECT_TRUE(answer.success) << answer;
    return Unformatted(TextOf(answer));
  }
  static std::string Unformatted(std::string rows) {
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

// More rows than one batch of items holds, and more cells in one of them.
TEST_F(Tables, ReadsLongTablesAndWideRows) {
  Show(kDoctype +
       "<table id=t></table><script>var html = ''; for (var i = 0; i < 150; ++i) {"
       "html += '<tr>'; for (var j = 0; j < (i == 149 ? 130 : 1); ++j) html += '<td>' + (i * 1000 + j); }"
       "document.getElementById('t').innerHTML = html</script>");
  std::string expected = "[[0]";
  for (int i = 0; i < 149; ++i) expected += ",[\"" + std::to_string(i * 1000) + "\"]";
  for (int j = 0; j < 130; ++j) expected += (j == 0 ? ",[\"" : ",\"") + std::to_string(149000 + j) + "\"";
  EXPECT_EQ(Rows({{"by", "id=t"}}), expected + "]]");
}

// Its text and its release are all that a cell costs.
TEST_F(Tables, ACellCostsOneCallAndItsRelease) {
  const CallFilter filter(TheBrowser().Page());
  LRESULT calls[2] = {};
  for (const int rows : {1, 2}) {
    Show(kDoctype + "<table id=t></table><script>document.getElementById('t').innerHTML = new Array(" +
         std::to_string(rows + 1) + ").join('<tr><th>h' + new Array(40).join('<td>x'))</script>");
    Rows({{"by", "id=t"}});
    filter.Reset();
    Rows({{"by", "id=t"}});
    calls[rows - 1] = filter.Calls();
  }
  EXPECT_LE(calls[1] - calls[0], 40 + 6) << "a row of 40 cells";
  EXPECT_LE(calls[0], 40 + 6 + 20);
}

// The text's member has another number in a heading cell than in a data cell, from document mode 9 on.
TEST_F(Tables, KindsOfCellsMayBeMixed) {
  for (const char* mode : {"<!doctype html>", ""}) {
    Show(std::string(mode) + "<table id=t><tr><td>a<th>b<td>c<tr><th>d<th>e<td>f<tr><td>g<td>h<td>i</table>");
    EXPECT_EQ(Rows({{"by", "id=t"}}), R"([[0,1,2],["a","b","c"],["d","e","f"],["g","h","i"]])");
  }
}

// One refused call costs one cell or one row; the command's own look-up and the table as a whole may fail.
TEST_F(Tables, ARefusedCallCostsOneCellOrOneRow) {
  Show(kDoctype + "<table id=t><tr><th>a<th>b<th>c<tr><td>d<td>e<td>f<tr><td>g<td>h<td>i</table>");
  const CallFilter filter(TheBrowser().Page());
  const std::string header = "[[0,1,2]";
  const std::string rows[] = {R"(,["a","b","c"])", R"(,["d","e","f"])", R"(,["g","h","i"])"};
  std::vector<std::string> allowed = {
      header + rows[0] + rows[1] + rows[2] + "]",
      // the first row counts the columns, so it takes them along
      "[[0]" + rows[0] + rows[1] + rows[2] + "]", "[" + rows[0].substr(1) + rows[1] + rows[2] + "]",
      "[" + rows[1].substr(1) + rows[2] + "]", header + rows[1] + rows[2] + "]",
      header + rows[0] + rows[2] + "]", header + rows[0] + rows[1] + "]"};
  for (const char cell : std::string("abcdefghi")) {
    std::string whole = allowed[0];
    whole.erase(whole.find(cell), 1);
    allowed.push_back(whole);
  }
  int tables = 0;
  for (int position = 1;; ++position) {
    filter.Reset();
    filter.Refuse(position);
    const Envelope answer = Call("gettable", {{"by", "id=t"}});
    if (filter.Refused() == 0) break;
    if (!answer.success) {
      EXPECT_EQ(answer, Failed("Table not found!"));
      continue;
    }
    ++tables;
    const std::string read = Unformatted(TextOf(answer));
    EXPECT_TRUE(std::ranges::find(allowed, read) != allowed.end()) << "call " << position << ": " << read;
    ASSERT_LT(position, 100);
  }
  EXPECT_GT(tables, 15);
}

// Whatever the browser refuses from some call on, the answer comes, and holds only what was read.
TEST_F(Tables, ABrowserThatRefusesEverythingEndsTheReading) {
  Show(kDoctype +
       "<table id=t></table><script>document.getElementById('t').innerHTML = "
       "new Array(71).join('<tr><td>x')</script>");
  const CallFilter filter(TheBrowser().Page());
  for (const int position : {8, 20, 60}) {
    filter.Reset();
    filter.RefuseFrom(position);
    const Envelope answer = Call("gettable", {{"by", "id=t"}});
    EXPECT_TRUE(answer == Failed("Table not found!") || answer.success) << answer;
  }
  filter.Reset();
  EXPECT_EQ(Rows({{"by", "id=t"}}).size(), 5u + 70 * 6);
}

// Taken off the page, or gone with its document, by the very reading of its second row.
TEST_F(Tables, ATableThatGoesWhileItIsReadEndsTheReading) {
  Serve("/frame", kDoctype +
                      "<table id=t><tr><td>a<tr><td id=bait>b<tr><td>c</table><script>function bait(end) {"
                      "Object.defineProperty(document.getElementById('bait'), 'innerText', "
                      "{get: function () { if (end) end(); end = null; return 'b' }}) }</script>");
  const struct {
    const char* end;
    const char* rows;
  } rows[] = {
      // A table off the page can still be read.
      {"bait(function () { document.body.removeChild(t) })", R"([[0],["a"],["b"],["c"]])"},
      {"bait(function () { frameElement.parentNode.removeChild(frameElement) })", R"([[0],["a"],[""]])"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.end);
    Show(kDoctype + "<iframe src='/frame'></iframe>");
    ASSERT_EQ(Call("selectframe", {{"target", "index=0"}}), Succeeded());
    Script(std::string(row.end) + "; 1");
    EXPECT_EQ(Rows({{"by", "id=t"}}), row.rows);
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
  // The climb goes on past a box without a table in it.
  Show(kDoctype + "<table id=o><tr><td><div class=layui-table-box><p id=in>no body table</p></div></table>");
  EXPECT_EQ(Rows({{"by", "id=in"}}), R"([[0],["no body table"]])");
}

/// A table of three pages, that begin() makes the first one again.
/// @param mark the class of the control on the last page. @param work_ms how long the control works before it
/// turns the page.
std::string Pager(const std::string& mark, int work_ms = 0) {
  return kDoctype + "<table id=t></table><a id=next onclick='turn(" + std::to_string(work_ms) +
         ")'>next</a><script>var page, next = document.getElementById('next');"
         "function turn(ms) { if (ms) " +
         PageServer::Hold(work_ms) + " if (++page == 3) next.className = '" + mark +
         "'; document.getElementById('t').innerHTML = '<tr><th>h<tr><td>' + page }"
         "function begin() { page = 0; next.className = 'go'; turn(0) } begin()</script>";
}
const std::string kAllPages = R"([[0],["h"],["1"],["h"],["2"],["h"],["3"]])";

TEST_F(Tables, TurnsPagesUntilTheControlIsDisabled) {
  for (const char* mark : {"x-disabled", "is-disable x"}) {
    Show(Pager(mark));
    EXPECT_EQ(Rows({{"by", "id=t"}, {"target", "id=next"}}), kAllPages) << mark;
  }
  Show(Pager("disabled"));
  EXPECT_EQ(Rows({{"by", "id=t"}, {"target", "id=absent"}}), R"([[0],["h"],["1"]])");
}

TEST_F(Tables, WaitsForPagesThatTakeTheirTime) {
  Show(Pager("disabled", 1500));
  EXPECT_EQ(Rows({{"by", "id=t"}, {"target", "id=next"}}), kAllPages);
  Show(Pager("disabled", 4000));
  EXPECT_EQ(Rows({{"by", "id=t"}, {"target", "id=next"}}), kAllPages);
}

TEST_F(Tables, APageThatAsksSomethingEndsThePaging) {
  Show(kDoctype + "<table id=t><tr><td>1</table><a id=next onclick='alert(1)'>next</a>");
  const ULONGLONG begin = GetTickCount64();
  EXPECT_EQ(Rows({{"by", "id=t"}, {"target", "id=next"}}), R"([[0],["1"]])");
  EXPECT_LT(GetTickCount64() - begin, 3500u) << "nobody can answer the box meanwhile";
  ASSERT_TRUE(AwaitBox());
  EXPECT_EQ(Call("assertalert"), Succeeded());
}

// Every fifth call: a refused one costs the later pages a cell or a row, unless it is the click itself.
TEST_F(Tables, ARefusedCallEndsNoPaging) {
  Show(Pager("disabled"));
  const CallFilter filter(TheBrowser().Page());
  int cut_short = 0;
  bool refused = true;
  for (int position = 30; refused; position += 5) {
    Script("begin(); 1");
    filter.Reset();
    filter.Refuse(position);
    const std::string read = Rows({{"by", "id=t"}, {"target", "id=next"}});
    refused = filter.Refused() != 0;
    filter.Reset();
    if (!read.contains("[\"3\"]")) ++cut_short;
    ASSERT_LT(position, 300);
  }
  EXPECT_LE(cut_short, 3) << "the second click, and what reads the last row";
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
