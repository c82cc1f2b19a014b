// The compiled expressions accept exactly the texts that the published ones do.
#include "api/validation.h"

#include <gtest/gtest.h>

#include <boost/regex.hpp>
#include <random>
#include <regex>
#include <string>
#include <vector>

namespace {

using namespace std::string_literals;
using quillmate::kPatternCount;
using quillmate::Matches;
using quillmate::Pattern;
using quillmate::PublishedSpelling;

/// What texts are put together from: every literal of the expressions, whole and broken, and the bytes that
/// matchers disagree about (line breaks, form feed, NUL, bytes that are negative as a char).
const std::vector<std::string> kPieces = {"http",
                                          "https",
                                          "file",
                                          "://",
                                          "left-top",
                                          "center",
                                          "right-bottom",
                                          "xpath=",
                                          "//*[@id=",
                                          "'",
                                          "\"",
                                          "]",
                                          "/",
                                          "text()=",
                                          "text()",
                                          "contains(",
                                          "starts-with(",
                                          ")",
                                          "(",
                                          ",",
                                          "@",
                                          "=",
                                          "id=",
                                          "name=",
                                          "class=",
                                          "value=",
                                          "label=",
                                          "src=",
                                          "index=",
                                          "title=",
                                          "url=",
                                          "anchor=",
                                          "handle=",
                                          "relative=",
                                          "parent",
                                          "top",
                                          "-",
                                          "0",
                                          "1",
                                          "12",
                                          std::string(31, '7'),
                                          std::string(32, '7'),
                                          "a",
                                          "B",
                                          " ",
                                          "\t",
                                          "\n",
                                          "\r",
                                          "\f",
                                          "\v",
                                          "\0"s,
                                          "\x7f",
                                          "\x80",
                                          "\x85",
                                          "\xa0",
                                          "\xe2\x80\xa8",
                                          "\xff"};

/// Texts that begin like the expression's own language, so that a good part of them is accepted.
std::vector<std::string> Openings(Pattern pattern) {
  switch (pattern) {
    case Pattern::kUrl:
      return {"http://", "file://"};
    case Pattern::kArea:
      return {"left-top", "center"};
    case Pattern::kIdXpath:
      return {"xpath=//*[@id='a']", "xpath=//*[@id=\"", "xpath=//*[@id='b']/"};
    case Pattern::kXpath:
    case Pattern::kAnyXpath:
      return {"xpath=", "xpath=/", "xpath=//"};
    case Pattern::kTextStep:
      return {"text()="};
    case Pattern::kContainsStep:
      return {"contains(", "contains(a,b)", "contains(,"};
    case Pattern::kStartsWithStep:
      return {"starts-with(", "starts-with(a,b)", "starts-with(,"};
    case Pattern::kAttributeStep:
      return {"@"};
    case Pattern::kElementKey:
    case Pattern::kFrameKey:
    case Pattern::kId:
      return {"id=", "name="};
    case Pattern::kName:
      return {"name="};
    case Pattern::kClass:
      return {"class="};
    case Pattern::kOption:
    case Pattern::kValue:
    case Pattern::kLabel:
      return {"value=", "label="};
    case Pattern::kSrc:
      return {"src="};
    case Pattern::kIndex:
      return {"index=", "index=0"};
    case Pattern::kTitle:
      return {"title="};
    case Pattern::kUrlKey:
      return {"url=http://", "url=file://"};
    case Pattern::kAnchor:
      return {"anchor="};
    case Pattern::kHandle:
      return {"handle="};
    case Pattern::kRelativeFrame:
      return {"relative=top", "relative="};
    case Pattern::kCoordinatePair:
      return {"0,1", "-1,", "12,-0"};
    default:
      return {};
  }
}

std::string RandomText(Pattern pattern, std::mt19937& random) {
  const auto openings = Openings(pattern);
  std::string text;
  if (!openings.empty() && random() % 4 != 0) text = openings[random() % openings.size()];
  for (auto pieces = random() % 6; pieces > 0; --pieces) text += kPieces[random() % kPieces.size()];
  return text;
}

/// Boost's "." refuses a form feed and the like; the documented grammar's refuses the two line breaks only.
std::string WithDotsWrittenOut(const std::string& published) {
  std::string result;
  for (size_t i = 0; i < published.size(); ++i) {
    if (published[i] == '\\') {
      result += published.substr(i++, 2);
    } else if (published[i] == '.') {
      result += R"([^\n\r])";
    } else {
      result += published[i];
    }
  }
  return result;
}

class PatternTest : public testing::TestWithParam<int> {};

TEST_P(PatternTest, AcceptsWhatThePublishedSpellingAccepts) {
  const auto pattern = static_cast<Pattern>(GetParam());
  const std::string published = PublishedSpelling(pattern);
  const boost::regex by_boost(WithDotsWrittenOut(published));
  // The standard library's matcher, an independent witness, has no repetition as long as {0,65535}.
  const bool has_second_witness = published.find("65535") == std::string::npos;
  const std::regex by_standard(has_second_witness ? published : "");
  std::mt19937 random(20'240'611);
  int accepted = 0;
  for (int i = 0; i < 4'000; ++i) {
    const std::string text = RandomText(pattern, random);
    const bool matches = Matches(pattern, text);
    accepted += matches ? 1 : 0;
    ASSERT_EQ(matches, boost::regex_match(text, by_boost)) << testing::PrintToString(text);
    if (has_second_witness) {
      ASSERT_EQ(matches, std::regex_match(text, by_standard)) << testing::PrintToString(text);
    }
  }
  EXPECT_GT(accepted, 40) << "the texts hardly try the expression";
}

INSTANTIATE_TEST_SUITE_P(Every, PatternTest, testing::Range(0, kPatternCount));

TEST(Patterns, BoundRepetitions) {
  EXPECT_TRUE(Matches(Pattern::kFreeText, std::string(65'535, '\n')));
  EXPECT_FALSE(Matches(Pattern::kFreeText, std::string(65'536, 'a')));
  EXPECT_TRUE(Matches(Pattern::kOption, "label=" + std::string(65'535, '\xff')));
  EXPECT_FALSE(Matches(Pattern::kFrameKey, "src=" + std::string(65'536, 'a')));
  EXPECT_TRUE(Matches(Pattern::kIndex, "index=" + std::string(32, '9')));
  EXPECT_FALSE(Matches(Pattern::kIndex, "index=" + std::string(33, '9')));
}

}  // namespace
