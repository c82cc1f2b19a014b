// The language of element locators, taken apart without looking at a page.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace quillmate {

/// Removes quotes that enclose a whole locator ('id=a') or its value (id='a').
/// @return the locator without them; nothing when it is not quoted so.
std::optional<std::string> Unquote(std::string_view locator);

/// The text after the first "="; empty when there is none.
std::string_view ValueOf(std::string_view locator);

/// A text and the selector in the brackets at its end.
struct Bracketed {
  std::string head;
  std::string selector;
  bool operator==(const Bracketed&) const = default;
};

/// Whether a byte of the code page in use begins a character of two bytes. The second byte of such a
/// character can look like a bracket.
using LeadByteTest = bool (*)(char byte);

/// Splits a text that ends with "]" at its last "[" after the first byte. Deliberate: knows nothing of
/// quotes, so that a bracket inside a quoted value splits too.
Bracketed SplitBracket(std::string_view text, LeadByteTest is_lead_byte);

/// One step of a path: its tag text with the leading slashes, and its selector.
using LocatorStep = Bracketed;

/// Splits a path before each "/" that follows another character than "/". Deliberate: knows nothing of
/// quotes or brackets, so that a "/" inside a predicate ends a step too.
std::vector<LocatorStep> SplitPath(std::string_view path, LeadByteTest is_lead_byte);

/// A test of one value of an element.
struct Predicate {
  enum class Source { kId, kClassName, kText, kAttribute };
  enum class Test { kNever, kEquals, kContains, kStartsWith };

  Test test = Test::kNever;
  Source source = Source::kAttribute;
  /// The attribute's name when source is kAttribute.
  std::string attribute;
  std::string value;

  /// @param actual the element's value, as far as the test needs one.
  bool Holds(std::string_view actual) const;
  bool operator==(const Predicate&) const = default;
};

/// Parses "@name='value'", "text()='value'", "contains(@name,'value')" or "starts-with(@name,'value')". An
/// equality is tried first, so a function whose argument holds "=" is read as one and never holds. A
/// function's arguments are split at the first comma outside quotes. Any other text gives a predicate that
/// never holds.
Predicate ParsePredicate(std::string_view text);

/// Takes every item of a collection.
struct EveryItem {
  bool operator==(const EveryItem&) const = default;
};
/// Takes one item by its position, which counts from 1; 0 and what no collection can hold take nothing.
struct Position {
  std::int32_t number = 0;
  bool operator==(const Position&) const = default;
};
using Selector = std::variant<EveryItem, Position, Predicate>;

/// What the text between brackets asks for.
Selector ParseSelector(std::string_view text);

/// Whether a selector takes nothing from any collection.
bool TakesNothing(const Selector& selector);

}  // namespace quillmate
