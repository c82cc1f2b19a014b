// Quotes, brackets, paths and predicates.
#include "locate/locator_syntax.h"

#include <charconv>

#include "api/validation.h"

namespace quillmate {
namespace {

bool IsQuote(char c) { return c == '\'' || c == '"'; }

/// The text inside a pair of equal quotes.
std::optional<std::string_view> QuotedText(std::string_view text) {
  if (text.size() < 2 || !IsQuote(text.front()) || text.back() != text.front()) return std::nullopt;
  return text.substr(1, text.size() - 2);
}

std::string_view TrimBlanks(std::string_view text) {
  const size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

void SetSource(Predicate& predicate, std::string_view name) {
  if (Matches(Pattern::kAttributeStep, name)) name.remove_prefix(1);
  if (name == "id") {
    predicate.source = Predicate::Source::kId;
  } else if (name == "class") {
    predicate.source = Predicate::Source::kClassName;
  } else if (name == "text()") {
    predicate.source = Predicate::Source::kText;
  } else {
    predicate.attribute = name;
  }
}

Predicate MakePredicate(Predicate::Test test, std::string_view name, std::string_view quoted) {
  const auto value = QuotedText(quoted);
  if (!value) return {};
  Predicate predicate;
  predicate.test = test;
  predicate.value = *value;
  SetSource(predicate, name);
  return predicate;
}

size_t FindCommaOutsideQuotes(std::string_view text) {
  char open_quote = '\0';
  for (size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (open_quote != '\0') {
      if (c == open_quote) open_quote = '\0';
    } else if (IsQuote(c)) {
      open_quote = c;
    } else if (c == ',') {
      return i;
    }
  }
  return std::string_view::npos;
}

/// @param name the function's name with its opening parenthesis.
Predicate ParseFunction(Predicate::Test test, std::string_view text, std::string_view name) {
  const std::string_view arguments = text.substr(name.size(), text.size() - name.size() - 1);
  const size_t comma = FindCommaOutsideQuotes(arguments);
  if (comma == std::string_view::npos) return {};
  return MakePredicate(test, TrimBlanks(arguments.substr(0, comma)), TrimBlanks(arguments.substr(comma + 1)));
}

}  // namespace

std::optional<std::string> Unquote(std::string_view locator) {
  if (locator.size() < 2 || !IsQuote(locator.back())) return std::nullopt;
  const char quote = locator.back();
  if (locator.front() == quote) return std::string(locator.substr(1, locator.size() - 2));
  const size_t equals = locator.find('=');
  if (equals == std::string_view::npos || equals < 1 || equals + 3 > locator.size()) return std::nullopt;
  if (locator[equals + 1] != quote) return std::nullopt;
  std::string unquoted(locator.substr(0, equals + 1));
  return unquoted.append(locator.substr(equals + 2, locator.size() - equals - 3));
}

std::string_view ValueOf(std::string_view locator) {
  const size_t equals = locator.find('=');
  return equals == std::string_view::npos ? std::string_view() : locator.substr(equals + 1);
}

Bracketed SplitBracket(std::string_view text, LeadByteTest is_lead_byte) {
  size_t open = 0;
  bool closed = false;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '[') open = i;
    closed = text[i] == ']';
    // Skips the second byte of a character.
    if (is_lead_byte(text[i])) ++i;
  }
  if (!closed || open == 0) return {std::string(text), {}};
  return {std::string(text.substr(0, open)), std::string(text.substr(open + 1, text.size() - open - 2))};
}

std::vector<LocatorStep> SplitPath(std::string_view path, LeadByteTest is_lead_byte) {
  std::vector<LocatorStep> steps;
  size_t begin = 0;
  while (begin < path.size()) {
    const size_t name = path.find_first_not_of('/', begin);
    const size_t end =
        name == std::string_view::npos ? path.size() : std::min(path.find('/', name), path.size());
    steps.push_back(SplitBracket(path.substr(begin, end - begin), is_lead_byte));
    begin = end;
  }
  return steps;
}

bool Predicate::Holds(std::string_view actual) const {
  switch (test) {
    case Test::kEquals:
      return actual == value;
    case Test::kContains:
      return actual.contains(value);
    case Test::kStartsWith:
      return actual.starts_with(value);
    case Test::kNever:
      break;
  }
  return false;
}

Predicate ParsePredicate(std::string_view text) {
  if (Matches(Pattern::kKeyValue, text)) {
    return MakePredicate(Predicate::Test::kEquals, text.substr(0, text.find('=')), ValueOf(text));
  }
  if (Matches(Pattern::kContainsStep, text))
    return ParseFunction(Predicate::Test::kContains, text, "contains(");
  if (Matches(Pattern::kStartsWithStep, text))
    return ParseFunction(Predicate::Test::kStartsWith, text, "starts-with(");
  return {};
}

Selector ParseSelector(std::string_view text) {
  if (text.empty()) return EveryItem{};
  if (!Matches(Pattern::kUnsignedInteger, text)) return ParsePredicate(text);
  Position position;
  std::from_chars(text.data(), text.data() + text.size(), position.number);
  return position;
}

bool TakesNothing(const Selector& selector) {
  const auto* position = std::get_if<Position>(&selector);
  const auto* predicate = std::get_if<Predicate>(&selector);
  return (position != nullptr && position->number < 1) ||
         (predicate != nullptr && predicate->test == Predicate::Test::kNever);
}

}  // namespace quillmate
