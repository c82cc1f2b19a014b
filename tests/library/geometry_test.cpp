// The commands that move a page's view and tell where an element is.
#include <windows.h>

#include "support/page_test.h"

namespace quillmate::test {
namespace {

class Geometry : public PageTest {
 protected:
  static std::string Corner(const char* target, const char* area = "left-top") {
    return TextOf(Call("getelementpos", {{"target", target}, {"area", area}}));
  }
};

const std::string kPage =
    "<!doctype html><style>body{margin:0}</style>"
    "<div id=box style='position:absolute;left:100px;top:60px;width:81px;height:40px'></div>"
    "<div id=pane style='position:absolute;left:300px;top:60px;width:100px;height:80px;overflow:auto'>"
    "<div style='width:500px;height:900px'></div></div>"
    "<div id=fits style='position:absolute;left:500px;top:60px;width:90px;height:80px;overflow:auto'>x</div>"
    "<div id=spills style='position:absolute;left:600px;top:60px;width:90px;height:80px'>"
    "<div style='height:300px'></div></div>"
    "<div id=wide style='position:absolute;left:700px;top:60px;width:90px;height:80px;overflow:auto'>"
    "<div style='width:900px;height:9px'></div></div>"
    "<div style='width:3000px;height:4000px'></div><div id=low style='height:30px'>low</div>"
    "<div id=tall style='height:3000px'></div>";

TEST_F(Geometry, TellsTheScreenPointOfEachArea) {
  Show(kPage);
  ASSERT_EQ(Call("scrollintoview", {{"target", "id=low"}}), Succeeded());
  EXPECT_EQ(Script("Math.round(low.getBoundingClientRect().top)"), "0") << "at the upper edge";
  Script("scrollTo(0, 0); 0");
  POINT corner{100, 60};
  ASSERT_TRUE(ClientToScreen(TheBrowser().Page(), &corner));
  const auto [x, y] = corner;
  EXPECT_EQ(Corner("id=box"), std::to_string(x) + "," + std::to_string(y));
  EXPECT_EQ(Corner("id=box", "center"), std::to_string(x + 40) + "," + std::to_string(y + 20));
  EXPECT_EQ(Corner("id=box", "right-bottom"), std::to_string(x + 81) + "," + std::to_string(y + 40));
}

// Just below the view: it ends at the body's in quirks layout, at the document element's else.
TEST_F(Geometry, ScrollsAnElementIntoViewToMeasureIt) {
  for (const std::string& page : {kPage, kPage.substr(kPage.find("<style>"))}) {
    Show(page);
    Script("low.style.cssText = 'position:absolute;height:30px;top:' + (innerHeight + 5) + 'px'; 0");
    EXPECT_FALSE(Corner("id=low").empty());
    EXPECT_NE(Script("pageYOffset"), "0");
    EXPECT_EQ(Call("getelementpos", {{"target", "id=tall"}, {"area", "center"}}),
              Failed("The element is not fully visible on the browser!"));
  }
}

TEST_F(Geometry, MovesTheViewAndScrollableElements) {
  const struct {
    const char* command;
    Parameters parameters;
    const char* where;
    const char* position;
  } rows[] = {
      {"scroll", {{"value", "30,200"}}, "pageXOffset + ',' + pageYOffset", "30,200"},
      {"scroll", {{"value", "-10,-50"}}, "pageXOffset + ',' + pageYOffset", "20,150"},
      {"scrollto", {{"value", "5,600"}}, "pageXOffset + ',' + pageYOffset", "5,600"},
      {"scrollto",
       {{"value", "0,70"}, {"target", "xpath=/html/body"}},
       "pageXOffset + ',' + pageYOffset",
       "0,70"},
      {"scrollto",
       {{"value", "40,300"}, {"target", "id=pane"}},
       "pane.scrollLeft + ',' + pane.scrollTop",
       "40,300"},
      {"scrollto",
       {{"value", "6,700"}, {"target", "xpath=/html"}},
       "pageXOffset + ',' + pageYOffset",
       "6,700"},
      {"scrollto",
       {{"value", "50,0"}, {"target", "id=wide"}},
       "wide.scrollLeft + ',' + wide.scrollTop",
       "50,0"},
      {"scrollto",
       {{"value", "0,0"}, {"target", "id=pane"}},
       "pane.scrollLeft + ',' + pane.scrollTop",
       "0,0"},
  };
  Show(kPage);
  for (const auto& row : rows) {
    EXPECT_EQ(Call(row.command, row.parameters), Succeeded()) << row.position;
    EXPECT_EQ(Script(row.where), row.position);
  }
}

TEST_F(Geometry, AnswersEveryCheckWithItsMessage) {
  const std::string locator = "Parameter verification failed! The element location mechanism not support.";
  const std::string pair =
      "Parameter verification failed! The value of the coordinate position should be %d,%d.";
  const std::string area = "Parameter verification failed! Area should be left-top|center|right-bottom.";
  const std::string still = "Target not support scroll, please check!";
  Show(kPage);
  const struct {
    const char* command;
    Parameters parameters;
    std::string message;
  } rows[] = {
      {"scroll", {{"value", "1"}}, pair},
      {"scrollto", {{"value", "1"}, {"target", "pane"}}, pair},
      {"scrollto", {{"value", "1,1"}, {"target", "pane"}}, locator},
      {"scrollto", {{"value", "1,1"}, {"target", "id=none"}}, "Element not found!"},
      {"scrollto", {{"value", "1,1"}, {"target", "id=fits"}}, still},
      {"scrollto", {{"value", "1,1"}, {"target", "id=spills"}}, still},
      {"scrollintoview", {{"target", "id=none"}}, "Element not found!"},
      {"getelementpos", {{"target", "box"}, {"area", "middle"}}, locator},
      {"getelementpos", {{"target", "id=none"}, {"area", "middle"}}, area},
      {"getelementpos", {{"target", "id=none"}, {"area", "center"}}, "Element not found!"},
  };
  for (const auto& row : rows)
    EXPECT_EQ(Call(row.command, row.parameters), Failed(row.message)) << row.command;
}

}  // namespace
}  // namespace quillmate::test
