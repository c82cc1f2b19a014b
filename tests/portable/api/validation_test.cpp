// The form of parameter values, as commands check it.
#include "api/validation.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace quillmate;

struct Row {
  bool (*check)(std::string_view);
  const char* name;
  std::vector<std::string> accepted;
  std::vector<std::string> refused;
};

const std::string kLongId = "id=" + std::string(65'532, 'a');

const std::vector<Row> kRows = {
    {IsElementLocator,
     "IsElementLocator",
     {"id=main", "name=q", "class=a b", "xpath=//div[1]", "xpath=", "xpath=//*[@id='a']", "id='a'",
      "id=\xb6\xa8", "xpath=//*[@id=\"a b\"]/td[2]", kLongId},
     {"", "ID=main", "id=", "css=#main", "xpath=div", "id=a\nb", "id=a\r", " id=a", "index=0",
      kLongId + "a"}},
    {IsWindowLocator,
     "IsWindowLocator",
     {"index=0", "index=12", "url=http://a", "url=file://c:/a.htm", "title=A title", "handle=0x10a",
      "id=main", "xpath=//a"},
     {"", "index=", "index=01", "index=-1", "index=1 ", "url=localhost", "url=ftp://a", "url=http://",
      "title=", "title=a\nb", "Title=a"}},
    {IsTextValue,
     "IsTextValue",
     {"", "a\r\nb", std::string(1, '\0'), std::string(65'535, 'a')},
     {std::string(65'536, 'a')}},
    {IsOptionSelector,
     "IsOptionSelector",
     {"index=0", "value=", "label=", "label=two\nlines", "value=" + std::string(65'529, 'a')},
     {"", "label", "index=01", "index=-1", "text=a", "Label=a", "value=" + std::string(65'530, 'a')}},
    {IsFrameLocator,
     "IsFrameLocator",
     {"relative=parent", "relative=top", "index=0", "id=", "name=a\nb", "src=http://a/b?c=d",
      "id=" + std::string(65'532, 'a')},
     {"", "relative=self", "relative=Top", "index=01", "class=a", "id=" + std::string(65'533, 'a')}},
    {IsArea,
     "IsArea",
     {"left-top", "center", "right-bottom"},
     {"", "Center", "center ", "left-top\n", "left"}},
};

TEST(Validation, AcceptsAndRefuses) {
  for (const Row& row : kRows) {
    for (const auto& text : row.accepted)
      EXPECT_TRUE(row.check(text)) << row.name << ": " << text.substr(0, 40);
    for (const auto& text : row.refused)
      EXPECT_FALSE(row.check(text)) << row.name << ": " << text.substr(0, 40);
  }
}

TEST(Validation, ReadsCoordinatePairs) {
  struct Case {
    const char* text;
    int x, y;
  };
  constexpr Case kPairs[] = {{"10,-5", 10, -5},
                             {"0,0", 0, 0},
                             {"-0,-0", 0, 0},
                             {"2147483647,-2147483648", 2'147'483'647, -2'147'483'647 - 1}};
  for (const Case& c : kPairs) {
    const auto pair = ParseCoordinatePair(c.text);
    ASSERT_TRUE(pair) << c.text;
    EXPECT_EQ(pair->x, c.x) << c.text;
    EXPECT_EQ(pair->y, c.y) << c.text;
  }
  for (const char* text : {"", "10", "10,", ",5", "10, 5", "+1,2", "1.5,2", "05,1", "1,2,3", "1,2\n",
                           "2147483648,0", "0,-2147483649", "99999999999999999999999999999999,1"}) {
    EXPECT_FALSE(ParseCoordinatePair(text)) << text;
  }
}

}  // namespace
