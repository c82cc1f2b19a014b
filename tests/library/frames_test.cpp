// Frames: which one a locator enters, and where elements are inside frames of any origin.
#include <windows.h>

#include "support/call_filter.h"
#include "support/page_test.h"

namespace quillmate::test {
namespace {

class Frames : public PageTest {
 protected:
  static std::string TextIn(const std::string& frame) {
    EXPECT_EQ(Call("selectframe", {{"target", frame}}), Succeeded()) << frame;
    const std::string text = TextOf(Call("gettext", {{"target", "id=p"}}));
    EXPECT_EQ(Call("selectframe", {{"target", "relative=top"}}), Succeeded());
    return text;
  }
  /// Clicks the box with the real pointer; the page must see the click on the box's own middle.
  static void ExpectClickOnTheMiddle() {
    const std::string middle = Script(
        "var r = document.getElementById('box').getBoundingClientRect();"
        "Math.floor((r.left + r.right) / 2) + ',' + Math.floor((r.top + r.bottom) / 2)");
    ASSERT_EQ(Call("click", {{"target", "id=box"}, {"manual-click", "True"}}), Succeeded());
    const auto clicks = OfType(EventsUntil("click"), "click");
    ASSERT_EQ(clicks.size(), 1u);
    EXPECT_EQ(clicks[0].target, "box");
    const auto is_close = [](int seen, int wanted) { return seen >= wanted - 1 && seen <= wanted + 1; };
    int x = 0;
    int y = 0;
    ASSERT_EQ(sscanf(middle.c_str(), "%d,%d", &x, &y), 2) << middle;
    // Each frame's own edges may lie between two pixels.
    EXPECT_TRUE(is_close(clicks[0].x, x) && is_close(clicks[0].y, y))
        << clicks[0].x << "," << clicks[0].y << " for " << middle;
  }
};

const std::string kBox =
    kRecorder +
    "<div id=box style='position:absolute;left:50px;top:40px;width:60px;height:30px;background:red'></div>";

std::string Frame(const std::string& id, const std::string& address, const std::string& style) {
  return "<iframe id=" + id + " src='" + address + "' style='position:absolute;" + style + "'></iframe>";
}

TEST_F(Frames, ElementsAreMeasuredThroughFramesOfAnyOrigins) {
  const struct {
    const char* name;
    int outer;
    int inner;
    const char* enter_outer;
    const char* enter_inner;
  } rows[] = {
      {"one origin", 0, 0, "id=outer", "id=inner"},
      {"a foreign frame in an own one", 0, 1, "id=outer", "id=inner"},
      {"a foreign page with a frame of its own", 1, 1, "id=outer", "id=inner"},
      {"home again", 1, 0, "id=outer", "id=inner"},
      {"three origins", 1, 2, "id=outer", "id=inner"},
      {"a foreign frame in an own one, by position", 0, 1, "index=1", "index=0"},
      {"three origins, by position", 1, 2, "index=1", "index=0"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const std::string inner = ServeFrom(row.inner, "/inner", "<!doctype html>" + kBox);
    const std::string outer =
        ServeFrom(row.outer, "/outer",
                  "<!doctype html>" +
                      Frame("inner", inner, "left:31px;top:43px;width:300px;height:200px;border:3px solid"));
    Show("<!doctype html>" + Frame("other", "about:blank", "left:700px;top:10px") +
         Frame("outer", outer, "left:70px;top:50px;width:500px;height:350px;border:7px solid;padding:5px"));
    ASSERT_EQ(Call("selectframe", {{"target", row.enter_outer}}), Succeeded());
    ASSERT_EQ(Call("selectframe", {{"target", row.enter_inner}}), Succeeded());
    ExpectClickOnTheMiddle();
    int x = 0;
    int y = 0;
    const std::string corner = TextOf(Call("getelementpos", {{"target", "id=box"}, {"area", "left-top"}}));
    ASSERT_EQ(sscanf(corner.c_str(), "%d,%d", &x, &y), 2) << corner;
    EXPECT_EQ(Call("movetoelement", {{"target", "id=box"}}), Succeeded());
    POINT cursor{};
    GetCursorPos(&cursor);
    EXPECT_EQ(cursor.x, x + 30);
    EXPECT_EQ(cursor.y, y + 15);
  }
}

TEST_F(Frames, TheEdgesOfAFrameCountInAnyUnit) {
  Serve("/inner", "<!doctype html>" + kBox);
  // In the page's style sheet, or the element's own style.
  const struct {
    bool in_sheet;
    const char* style;
  } rows[] = {{true, "padding:2em"},
              {false, "padding:12pt 30pt"},
              {true, "padding:5%"},
              {false, "padding:1cm 0 0 .5in;border:1em solid"},
              {true, "padding:calc(1em + 7px)"},
              {false, "border:9px solid;padding:11px 3px 8px 21px"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.style);
    const std::string place = "left:70px;top:50px;width:500px;height:300px;";
    const std::string style = row.style;
    Show("<!doctype html><style>#outer{" + (row.in_sheet ? style : "") + "}</style>" +
         Frame("outer", "/inner", place + (row.in_sheet ? "" : style)));
    ASSERT_EQ(Call("selectframe", {{"target", "id=outer"}}), Succeeded());
    ExpectClickOnTheMiddle();
  }
}

// A frame shows its page inside its padding only: what lies further down is scrolled into view first.
TEST_F(Frames, ElementsBehindTheLowerAndRightEdgesAreNotVisible) {
  const std::string far_away = "<div style='width:3000px;height:3000px'></div>";
  for (const char* place : {"left:40px;top:205px", "left:305px;top:40px"}) {
    SCOPED_TRACE(place);
    Serve("/inner", "<!doctype html>" + kRecorder +
                        "<style>html{overflow:hidden}</style><div id=box style='position:absolute;width:30px;"
                        "height:30px;background:red;" +
                        std::string(place) + "'></div>" + far_away);
    Show("<!doctype html>" +
         Frame("outer", "/inner",
               "left:20px;top:50px;width:300px;height:200px;border:6px solid;padding:40px"));
    ASSERT_EQ(Call("selectframe", {{"target", "id=outer"}}), Succeeded());
    EXPECT_EQ(Script("pageXOffset + pageYOffset"), "0");
    ASSERT_EQ(Call("movetoelement", {{"target", "id=box"}}), Succeeded());
    EXPECT_NE(Script("pageXOffset + pageYOffset"), "0");
  }
}

TEST_F(Frames, FramesOfAFramesetAreMeasured) {
  Serve("/left", "<!doctype html><p id=p>left</p>");
  Serve("/right", "<!doctype html>" + kBox);
  Show("<!doctype html><frameset cols='200,*'><frame name=l src=/left><frame name=r src=/right></frameset>");
  for (const char* frame : {"name=r", "index=1", "src=/right"}) {
    SCOPED_TRACE(frame);
    ASSERT_EQ(Call("selectframe", {{"target", frame}}), Succeeded());
    Script("seen = []; 0");
    ExpectClickOnTheMiddle();
    Call("selectframe", {{"target", "relative=top"}});
  }
}

TEST_F(Frames, ALocatorEntersItsFrameOnly) {
  const std::string foreign = ServeFrom(1, "/g.html", "<p id=p>foreign</p>");
  const std::string other = Serve("/frame.html", "<p id=p>frame</p>");
  const std::string based = Serve("/app/f.html", "<p id=p>based</p>");
  const std::string blank = Serve("/app/a%20b.html", "<p id=p>blank</p>");
  const std::string host = based.substr(0, based.size() - 11);
  for (const std::string& mode : {std::string("<!doctype html>"), std::string()}) {
    SCOPED_TRACE(mode.empty() ? "quirks" : "standards");
    Show(mode +
         "<base href='/app/'><iframe src=f.html></iframe><iframe id=f1 name=n1 src=/frame.html></iframe>"
         "<iframe id=f2 src='" +
         foreign + "'></iframe><iframe src='a b.html'></iframe><iframe></iframe>");
    const struct {
      std::string locator;
      const char* text;
    } found[] = {
        {"index=0", "based"},         {"index=1", "frame"},          {"index=2", "foreign"},
        {"id='f1'", "frame"},         {"\"id=f1\"", "frame"},        {"name=n1", "frame"},
        {"src=/frame.html", "frame"}, {"src=" + other, "frame"},     {"src=f.html", "based"},
        {"src=" + based, "based"},    {"src=" + foreign, "foreign"}, {"src=a b.html", "blank"},
        {"src=" + blank, "blank"},    {"\"index=1\"", "frame"},
    };
    for (const auto& row : found) EXPECT_EQ(TextIn(row.locator), row.text) << row.locator;
    for (const std::string& none :
         {std::string("id="), std::string("id=''"), std::string("name="), std::string("name=''"),
          std::string("src="), std::string("src=''"), std::string("id=none"), std::string("name=N1"),
          std::string("src=http://h/f.html"), "src=" + host + "/f.html", std::string("index=9"),
          std::string("index=99999999999"), std::string("5"), std::string("null")}) {
      EXPECT_EQ(Call("selectframe", {{"target", none}}), Failed("Can't find frame by " + none)) << none;
    }
  }
  EXPECT_EQ(Call("selectframe", {{"target", "index=01"}}).success, false);
}

// Quoted, the ways out are kept in the path as they were given, and lead there as if they were not.
TEST_F(Frames, QuotedWaysOutOfAFrameKeepElementsMeasurable) {
  Serve("/inner", "<!doctype html>" + kBox);
  const std::string page = "<!doctype html>" + kBox + Frame("outer", "/inner", "left:300px;top:200px");
  const struct {
    std::initializer_list<const char*> locators;
  } rows[] = {{{"\"relative=top\""}},
              {{"\"relative=parent\""}},
              {{"id=outer", "\"relative=parent\""}},
              {{"id=outer", "'relative=top'", "\"relative=top\""}},
              {{"id=outer", "\"relative=parent\"", "id=outer"}}};
  for (const auto& row : rows) {
    Show(page);
    for (const char* locator : row.locators) Call("selectframe", {{"target", locator}});
    ExpectClickOnTheMiddle();
  }
}

// A call that never reaches the page fails the measurement: the point would be beside the element.
TEST_F(Frames, AMeasurementWithARefusedCallFailsOrAnswersTheSame) {
  Serve("/inner", "<!doctype html>" + kBox);
  const std::string address = ServeFrom(1, "/outer", "<!doctype html>" + kBox);
  Show("<!doctype html>" + Frame("one", "/inner", "left:20px;top:50px;border:11px solid;padding:1em") +
       Frame("two", address, "left:420px;top:50px;border:11px solid;padding:6px"));
  const CallFilter filter(TheBrowser().Page());
  for (const char* frame : {"id=one", "index=1"}) {
    SCOPED_TRACE(frame);
    ASSERT_EQ(Call("selectframe", {{"target", frame}}), Succeeded());
    for (const char* command : {"getelementpos", "haselement"}) {
      SCOPED_TRACE(command);
      const Parameters parameters{
          {"target", "xpath=//div[@id='box']"}, {"area", "center"}, {"check_type", "visible"}};
      Call(command, parameters);
      const Envelope healthy = Call(command, parameters);
      EXPECT_TRUE(healthy.success) << healthy;
      for (int position = 1; position < 100; ++position) {
        filter.Reset();
        filter.Refuse(position);
        const Envelope answer = Call(command, parameters);
        if (filter.Refused() == 0) break;
        EXPECT_TRUE(answer == healthy || (!answer.success && answer.result == "0" && !answer.log.empty()))
            << "call " << position << " refused: " << answer;
      }
      filter.Reset();
    }
    Call("selectframe", {{"target", "relative=top"}});
  }
}

}  // namespace
}  // namespace quillmate::test
