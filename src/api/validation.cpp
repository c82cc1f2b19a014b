#include "api/validation.h"

#include <array>
#include <boost/regex.hpp>
#include <charconv>

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

constexpr size_t kMaxLocatorBytes = 65'535;

bool HasLocatorLength(std::string_view text) { return !text.empty() && text.size() <= kMaxLocatorBytes; }

std::optional<int> ParseInt(std::string_view digits) {
  int value = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  if (error != std::errc()) return std::nullopt;
  return value;
}

}  // namespace

bool Matches(Pattern pattern, std::string_view text) {
  try {
    return boost::regex_match(text.begin(), text.end(), compiled_patterns[static_cast<size_t>(pattern)]);
  } catch (const std::runtime_error&) {
    return false;  // the matcher gave up on a text too complex for it
  }
}

const char* PublishedSpelling(Pattern pattern) { return kSpellings[static_cast<size_t>(pattern)].published; }

bool IsElementLocator(std::string_view text) {
  return HasLocatorLength(text) && (Matches(Pattern::kElementKey, text) || Matches(Pattern::kIdXpath, text) ||
                                    Matches(Pattern::kXpath, text));
}

bool IsWindowLocator(std::string_view text) {
  return HasLocatorLength(text) &&
         (IsElementLocator(text) || Matches(Pattern::kIndex, text) || Matches(Pattern::kUrlKey, text) ||
          Matches(Pattern::kTitle, text) || Matches(Pattern::kHandle, text));
}

bool IsTextValue(std::string_view text) { return Matches(Pattern::kFreeText, text); }

bool IsOptionSelector(std::string_view text) {
  return HasLocatorLength(text) && (Matches(Pattern::kIndex, text) || Matches(Pattern::kOption, text));
}

bool IsFrameLocator(std::string_view text) {
  return HasLocatorLength(text) && (Matches(Pattern::kRelativeFrame, text) ||
                                    Matches(Pattern::kIndex, text) || Matches(Pattern::kFrameKey, text));
}

bool IsArea(std::string_view text) { return Matches(Pattern::kArea, text); }

std::optional<CoordinatePair> ParseCoordinatePair(std::string_view text) {
  if (!Matches(Pattern::kCoordinatePair, text)) return std::nullopt;
  const size_t comma = text.find(',');
  // The pattern allows 32 digits, so a well-formed number can still be too large.
  const auto x = ParseInt(text.substr(0, comma));
  const auto y = ParseInt(text.substr(comma + 1));
  if (!x || !y) return std::nullopt;
  return CoordinatePair{*x, *y};
}

}  // namespace quillmate
