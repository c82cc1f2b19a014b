// The locator language: each table row is a text and what it means.
#include "locate/locator_syntax.h"

#include <gtest/gtest.h>

namespace quillmate {
namespace {

using Source = Predicate::Source;
using Kind = Predicate::Test;

bool OneByteEach(char) { return false; }
bool TwoBytesFrom81(char byte) { return static_cast<unsigned char>(byte) >= 0x81; }

TEST(Unquote, TakesTheQuotesOfTheWholeLocatorOrOfItsValue) {
  const struct {
    const char* locator;
    std::optional<std::string> unquoted;
  } rows[] = {
      {"id='k1'", "id=k1"},
      {"\"id=k1\"", "id=k1"},
      {"'title=a'", "title=a"},
      {"id=''", "id="},
      {"''", ""},
      {"'id='k1''", "id='k1'"},
      {"id=\"a=b\"", "id=a=b"},
      {"id='k1", std::nullopt},
      {"id=k1'", std::nullopt},
      {"id='k1\"", std::nullopt},
      {"id='", std::nullopt},
      {"='k1'", std::nullopt},
      {"'", std::nullopt},
      {"", std::nullopt},
      {"id=k1", std::nullopt},
      {"xpath=//a[@id='x']", std::nullopt},
  };
  for (const auto& row : rows) EXPECT_EQ(Unquote(row.locator), row.unquoted) << row.locator;
}

TEST(SplitBracket, SplitsAtTheLastBracketAndKnowsNoQuotes) {
  const struct {
    const char* text;
    Bracketed split;
  } rows[] = {
      {"q[2]", {"q", "2"}},       {"a[@title='x[1]']", {"a[@title='x", "1]'"}},
      {"a[]", {"a", ""}},         {"[2]", {"[2]", ""}},
      {"a[1]b", {"a[1]b", ""}},   {"a]", {"a]", ""}},
      {"a[1][2]", {"a[1]", "2"}}, {"", {"", ""}},
      {"[x][2]", {"[x]", "2"}},
  };
  for (const auto& row : rows) EXPECT_EQ(SplitBracket(row.text, OneByteEach), row.split) << row.text;
}

// Trail bytes of ordinary characters of code pages 932 and 950 are brackets.
TEST(SplitBracket, TakesTheSecondByteOfACharacterForNoBracket) {
  const struct {
    const char* text;
    Bracketed split;
  } rows[] = {
      {"a[text()='\x83T\x81[\x83o\x81[']", {"a", "text()='\x83T\x81[\x83o\x81['"}},
      {"button[text()='\xA5[\xA4J']", {"button", "text()='\xA5[\xA4J'"}},
      {"\x83\x5D", {"\x83\x5D", ""}},
      {"q[1\x83]", {"q[1\x83]", ""}},
      {"\x81[\x81[[2]", {"\x81[\x81[", "2"}},
      {"\x81[2]", {"\x81[2]", ""}},
  };
  for (const auto& row : rows) EXPECT_EQ(SplitBracket(row.text, TwoBytesFrom81), row.split) << row.text;
  EXPECT_EQ(SplitPath("//a[text()='\x81[']/b", TwoBytesFrom81),
            (std::vector<LocatorStep>{{"//a", "text()='\x81['"}, {"/b", ""}}));
}

TEST(Selectors, TakeNothingByTheirForm) {
  for (const char* nothing : {"0", "last()", "@a=b", "contains(@href,'a=b')", "99999999999999999999"})
    EXPECT_TRUE(TakesNothing(ParseSelector(nothing))) << nothing;
  for (const char* something : {"", "1", "@a='b'", "contains(@a,'b')"})
    EXPECT_FALSE(TakesNothing(ParseSelector(something))) << something;
}

TEST(SplitPath, KeepsLeadingSlashesAndSplitsInsidePredicates) {
  using Steps = std::vector<LocatorStep>;
  EXPECT_EQ(SplitPath("/html/body//div[2]", OneByteEach),
            (Steps{{"/html", ""}, {"/body", ""}, {"//div", "2"}}));
  EXPECT_EQ(SplitPath("//a[@href='x/y']", OneByteEach), (Steps{{"//a[@href='x", ""}, {"/y']", ""}}));
  EXPECT_EQ(SplitPath("//*[@id='m']/.././p", OneByteEach),
            (Steps{{"//*", "@id='m'"}, {"/..", ""}, {"/.", ""}, {"/p", ""}}));
  EXPECT_EQ(SplitPath("div/p", OneByteEach), (Steps{{"div", ""}, {"/p", ""}}));
  EXPECT_EQ(SplitPath("///div//", OneByteEach), (Steps{{"///div", ""}, {"//", ""}}));
  EXPECT_EQ(SplitPath("", OneByteEach), Steps{});
}

TEST(ParsePredicate, ReadsEqualitiesBeforeFunctions) {
  const struct {
    const char* text;
    Predicate predicate;
  } rows[] = {
      {"@type='submit'", {Kind::kEquals, Source::kAttribute, "type", "submit"}},
      {"@id=\"m\"", {Kind::kEquals, Source::kId, "", "m"}},
      {"class='a b'", {Kind::kEquals, Source::kClassName, "", "a b"}},
      {"text()='Next'", {Kind::kEquals, Source::kText, "", "Next"}},
      {"@title=''", {Kind::kEquals, Source::kAttribute, "title", ""}},
      {"@href='a=b'", {Kind::kEquals, Source::kAttribute, "href", "a=b"}},
      {"contains(text(),'Next')", {Kind::kContains, Source::kText, "", "Next"}},
      {"contains(@title, 'a,b')", {Kind::kContains, Source::kAttribute, "title", "a,b"}},
      {"starts-with(@class,\"x\")", {Kind::kStartsWith, Source::kClassName, "", "x"}},
      {"contains(@href,'a=b')", {}},
      {"@type=submit", {}},
      {"@type='submit\"", {}},
      {"@type='", {}},
      {"contains(text())", {}},
      {"contains('a,b')", {}},
      {"@a='1' and @b='2' or x", {}},
      {"last()", {}},
  };
  for (const auto& row : rows) EXPECT_EQ(ParsePredicate(row.text), row.predicate) << row.text;
}

TEST(Predicate, ComparesBytes) {
  EXPECT_TRUE(ParsePredicate("text()='ab'").Holds("ab"));
  EXPECT_FALSE(ParsePredicate("text()='ab'").Holds("Ab"));
  EXPECT_TRUE(ParsePredicate("contains(text(),'b')").Holds("abc"));
  EXPECT_FALSE(ParsePredicate("starts-with(text(),'b')").Holds("abc"));
  EXPECT_TRUE(ParsePredicate("starts-with(text(),'a')").Holds("abc"));
  EXPECT_FALSE(ParsePredicate("nonsense").Holds(""));
}

TEST(ParseSelector, TellsPositionsFromPredicates) {
  EXPECT_EQ(ParseSelector(""), Selector(EveryItem{}));
  EXPECT_EQ(ParseSelector("12"), Selector(Position{12}));
  EXPECT_EQ(ParseSelector("0"), Selector(Position{0}));
  EXPECT_EQ(ParseSelector("2147483648"), Selector(Position{0}));
  EXPECT_EQ(ParseSelector("99999999999999999999999999999999"), Selector(Position{0}));
  EXPECT_EQ(ParseSelector("01"), Selector(Predicate{}));
  EXPECT_EQ(ParseSelector("-1"), Selector(Predicate{}));
}

}  // namespace
}  // namespace quillmate
