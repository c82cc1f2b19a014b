// The table command on real grids of the layui package, in several of its versions: what is read must be what
// the grid was given.
#include <windows.h>
#include <initializer_list>

#include "support/page_test.h"

namespace quillmate::test {
namespace {

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
