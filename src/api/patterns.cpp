#include "api/patterns.h"

#include <array>
#include <boost/regex.hpp>

namespace quillmate {
namespace {

struct Spelling {
  Pattern pattern;
  const char* published;
  /// The same language without ambiguity: backtracking over `(\/.*)*` is exponential, over `.+=.+` quadratic.
  /// "." is written out because Boost's also refuses a form feed; anchors are left out, the whole text is
  /// matched.
  const char* compiled;
};

constexpr std::array<Spelling, kPatternCount> kSpellings = {{
    {Pattern::kUrl, R"(^(http|https|file)://.+$)", R"((http|https|file)://[^\r\n]+)"},
    {Pattern::kSignedInteger, R"(^-{0,1}([1-9][0-9]{0,31}|0)$)", R"(-?([1-9][0-9]{0,31}|0))"},
    {Pattern::kUnsignedInteger, R"(^([1-9][0-9]{0,31}|0)$)", R"([1-9][0-9]{0,31}|0)"},
    {Pattern::kFreeText, R"(^[\s\S]{0,65535}$)", R"([\s\S]{0,65535})"},
    {Pattern::kArea, R"(^(left-top|center|right-bottom)$)", R"(left-top|center|right-bottom)"},
    {Pattern::kIdXpath, R"(^xpath=\/\/\*\[@id=('|")[^\/]+?('|")\](\/.*)*$)",
     R"(xpath=//\*\[@id=['"][^/]+['"]\](/[^\r\n]*)?)"},
    {Pattern::kXpath, R"(^xpath=(\/.*)*$)", R"(xpath=(/[^\r\n]*)?)"},
    {Pattern::kTextStep, R"(^text\(\)=.+$)", R"(text\(\)=[^\r\n]+)"},
    {Pattern::kContainsStep, R"(^contains\(.+,.+\)$)", R"(contains\([^\r\n][^,\r\n]*,[^\r\n]+\))"},
    {Pattern::kStartsWithStep, R"(^starts-with\(.+,.+\)$)", R"(starts-with\([^\r\n][^,\r\n]*,[^\r\n]+\))"},
    {Pattern::kAttributeStep, R"(^@.+$)", R"(@[^\r\n]+)"},
    {Pattern::kKeyValue, R"(^.+=.+$)", R"([^\r\n][^=\r\n]*=[^\r\n]+)"},
    {Pattern::kAnyXpath, R"(^xpath=.+$)", R"(xpath=[^\r\n]+)"},
    {Pattern::kElementKey, R"(^(id|name|class)=.+$)", R"((id|name|class)=[^\r\n]+)"},
    {Pattern::kOption, R"(^(value|label)=[\s\S]{0,65535}$)", R"((value|label)=[\s\S]{0,65535})"},
    {Pattern::kFrameKey, R"(^(id|src|name)=[\s\S]{0,65535}$)", R"((id|src|name)=[\s\S]{0,65535})"},
    {Pattern::kId, R"(^id=.+$)", R"(id=[^\r\n]+)"},
    {Pattern::kName, R"(^name=.+$)", R"(name=[^\r\n]+)"},
    {Pattern::kClass, R"(^class=.+$)", R"(class=[^\r\n]+)"},
    {Pattern::kIndex, R"(^index=([1-9][0-9]{0,31}|0)$)", R"(index=([1-9][0-9]{0,31}|0))"},
    {Pattern::kValue, R"(^value=.+$)", R"(value=[^\r\n]+)"},
    {Pattern::kSrc, R"(^src=.+$)", R"(src=[^\r\n]+)"},
    {Pattern::kLabel, R"(^label=.+$)", R"(label=[^\r\n]+)"},
    {Pattern::kTitle, R"(^title=.+$)", R"(title=[^\r\n]+)"},
    {Pattern::kUrlKey, R"(^url=(http|https|file)://.+$)", R"(url=(http|https|file)://[^\r\n]+)"},
    {Pattern::kAnchor, R"(^anchor=.+$)", R"(anchor=[^\r\n]+)"},
    {Pattern::kHandle, R"(^handle=.+$)", R"(handle=[^\r\n]+)"},
    {Pattern::kRelativeFrame, R"(^relative=(parent|top)$)", R"(relative=(parent|top))"},
    {Pattern::kCoordinatePair, R"(^-{0,1}([1-9][0-9]{0,31}|0),-{0,1}([1-9][0-9]{0,31}|0)$)",
     R"(-?([1-9][0-9]{0,31}|0),-?([1-9][0-9]{0,31}|0))"},
}};

constexpr bool SpellingsStandInOrder() {
  for (int i = 0; i < kPatternCount; ++i) {
    if (static_cast<int>(kSpellings[static_cast<size_t>(i)].pattern) != i) return false;
  }
  return true;
}
static_assert(SpellingsStandInOrder(), "a pattern's number is its place in the table");

// Boost's default traits on Windows ask the system about every character; these take the C locale.
using Regex = boost::basic_regex<char, boost::cpp_regex_traits<char>>;

std::array<Regex, kPatternCount> CompileAll() {
  std::array<Regex, kPatternCount> all;
  for (size_t i = 0; i < all.size(); ++i) all[i].assign(kSpellings[i].compiled);
  return all;
}

// Compiled as the library is loaded, so that a command pays only for matching.
const std::array<Regex, kPatternCount> compiled_patterns = CompileAll();

}  // namespace

bool Matches(Pattern pattern, std::string_view text) {
  try {
    return boost::regex_match(text.begin(), text.end(), compiled_patterns[static_cast<size_t>(pattern)]);
  } catch (const std::runtime_error&) {
    return false;  // the matcher gave up on a text too complex for it
  }
}

const char* PublishedSpelling(Pattern pattern) { return kSpellings[static_cast<size_t>(pattern)].published; }

}  // namespace quillmate
