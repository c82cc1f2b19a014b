#include "locate/first_step.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <utility>

#include "com/bstr.h"
#include "com/call_failure.h"
#include "com/encoding.h"
#include "com/variant.h"

namespace quillmate {
namespace {

using Source = Predicate::Source;

/// The tag that a step names, empty for "*"; nothing when the tag could mean more than its letters.
std::optional<std::string> TagOf(std::string_view head) {
  const size_t slashes = head.starts_with("//") ? 2 : 1;
  if (!head.starts_with('/')) return std::nullopt;
  const std::string_view name = head.substr(slashes);
  if (name == "*") return std::string();
  const auto is_plain = [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
  };
  if (name.empty() || !std::ranges::all_of(name, is_plain)) return std::nullopt;
  return std::string(name);
}

/// Whether the page can hold this text under no other spelling. Characters outside the code page compare as
/// its default character.
bool IsOneSpelling(std::string_view value) { return !value.empty() && !value.contains('?'); }

FirstStepAnswer Unanswered(HRESULT result) {
  return com::FailedInTransit(result) ? FirstStepAnswer(Unasked{result}) : FirstStepAnswer(WalkNeeded{});
}

/// Whether an element is what the step names. Below document mode 8 a document finds ids in either case, and
/// names among them.
HRESULT IsExact(IHTMLElement* element, const std::string& tag, const Predicate& predicate) {
  const HRESULT holds = PredicateTest(predicate, false).Holds(element);
  return holds != S_OK || tag.empty() ? holds : HasTag(element, tag);
}

FirstStepAnswer AskById(IHTMLDocument2* document, const std::string& tag, const Predicate& predicate,
                        Wanted wanted) {
  com::ComPtr<IHTMLDocument3> searchable;
  com::ComPtr<IHTMLElement> element;
  HRESULT result = com::QueryKnown(document, searchable);
  if (SUCCEEDED(result))
    result = searchable->getElementById(com::Bstr(com::FromAnsi(predicate.value)).get(), &element);
  if (FAILED(result)) return Unanswered(result);
  // Every document mode finds at least the elements that have exactly this id.
  if (element == nullptr) return NoMatch{};
  if (wanted == Wanted::kCount) return WalkNeeded{};
  result = IsExact(element.Get(), tag, predicate);
  if (result == S_OK) return FirstMatch{std::move(element)};
  return Unanswered(result);
}

FirstStepAnswer AskByClass(IHTMLDocument2* document, const std::string& tag, const Predicate& predicate) {
  // A text of blanks names no class.
  if (predicate.value.find_first_not_of(" \t\r\n\f") == std::string::npos) return WalkNeeded{};
  com::ComPtr<IHTMLDocument7> searchable;
  Candidates candidates{{}, false, tag};
  HRESULT result = document->QueryInterface(IID_PPV_ARGS(&searchable));
  if (SUCCEEDED(result)) {
    result = searchable->getElementsByClassName(com::Bstr(com::FromAnsi(predicate.value)).get(),
                                                &candidates.collection);
  }
  if (FAILED(result) || candidates.collection == nullptr) return Unanswered(result);
  return AmongCandidates{std::move(candidates)};
}

/// Elements whose name is an attribute of HTML. A document does not find the invented names of others.
bool HasNameOfItsOwn(const std::string& tag) {
  constexpr std::array kNamed = {"a", "button", "form", "iframe", "img", "input", "select", "textarea"};
  return std::ranges::any_of(kNamed, [&](const char* named) { return _stricmp(named, tag.c_str()) == 0; });
}

/// Below document mode 9 the names that scripts gave to new elements are not found.
HRESULT FindsEveryName(IHTMLDocument2* document) {
  com::ComPtr<IHTMLDocument6> newer;
  com::Variant mode;
  HRESULT result = document->QueryInterface(IID_PPV_ARGS(&newer));
  if (SUCCEEDED(result)) result = newer->get_documentMode(mode.put());
  if (FAILED(result)) return result;
  return mode.type() == VT_R4 && mode.get().fltVal >= 9 ? S_OK : S_FALSE;
}

FirstStepAnswer AskByName(IHTMLDocument2* document, const std::string& tag, const Predicate& predicate) {
  if (!HasNameOfItsOwn(tag)) return WalkNeeded{};
  HRESULT result = FindsEveryName(document);
  if (result != S_OK) return Unanswered(result);
  com::ComPtr<IHTMLDocument3> searchable;
  Candidates candidates{{}, false, tag};
  result = com::QueryKnown(document, searchable);
  if (SUCCEEDED(result)) {
    result = searchable->getElementsByName(com::Bstr(com::FromAnsi(predicate.value)).get(),
                                           &candidates.collection);
  }
  if (FAILED(result) || candidates.collection == nullptr) return Unanswered(result);
  return AmongCandidates{std::move(candidates)};
}

}  // namespace

FirstStepAnswer AskDocument(IHTMLDocument2* document, const LocatorStep& step, const Selector& selector,
                            Wanted wanted) {
  const auto* predicate = std::get_if<Predicate>(&selector);
  const auto tag = TagOf(step.head);
  if (predicate == nullptr || predicate->test != Predicate::Test::kEquals || !tag ||
      !IsOneSpelling(predicate->value)) {
    return WalkNeeded{};
  }
  if (predicate->source == Source::kId) return AskById(document, *tag, *predicate, wanted);
  if (predicate->source == Source::kClassName) return AskByClass(document, *tag, *predicate);
  if (predicate->source == Source::kAttribute && predicate->attribute == "name")
    return AskByName(document, *tag, *predicate);
  return WalkNeeded{};
}

}  // namespace quillmate
