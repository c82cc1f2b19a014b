#include "locate/path_steps.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <utility>

#include "com/call_limit.h"
#include "com/encoding.h"
#include "com/owned.h"

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

/// The answer of a call that gives its collection as IDispatch.
HRESULT AsCollection(HRESULT result, const com::ComPtr<IDispatch>& object,
                     IHTMLElementCollection** collection) {
  if (FAILED(result)) return result;
  if (object == nullptr) return E_FAIL;
  com::ComPtr<IHTMLElementCollection> typed;
  const HRESULT query = com::QueryKnown(object.Get(), typed);
  *collection = typed.Detach();
  return query;
}

HRESULT FromDocument(IHTMLDocument2* document, std::string_view name, IHTMLElementCollection** collection) {
  if (name == "*") return document->get_all(collection);
  com::ComPtr<IHTMLDocument3> searchable;
  const HRESULT result = com::QueryKnown(document, searchable);
  if (FAILED(result)) return result;
  return searchable->getElementsByTagName(com::Bstr(com::FromAnsi(name)).get(), collection);
}

HRESULT Descendants(IHTMLElement* element, std::string_view name, IHTMLElementCollection** collection) {
  if (name == "*") {
    com::ComPtr<IDispatch> all;
    const HRESULT result = element->get_all(&all);
    return AsCollection(result, all, collection);
  }
  com::ComPtr<IHTMLElement2> searchable;
  const HRESULT result = com::QueryKnown(element, searchable);
  if (FAILED(result)) return result;
  return searchable->getElementsByTagName(com::Bstr(com::FromAnsi(name)).get(), collection);
}

HRESULT Children(IHTMLElement* element, std::string_view name, IHTMLElementCollection** collection) {
  com::ComPtr<IDispatch> object;
  HRESULT result = element->get_children(&object);
  if (name == "*") return AsCollection(result, object, collection);
  com::ComPtr<IHTMLElementCollection> children;
  result = AsCollection(result, object, &children);
  if (FAILED(result)) return result;
  com::ComPtr<IDispatch> tagged;
  result = children->tags(com::Variant::Text(com::FromAnsi(name)).get(), &tagged);
  return AsCollection(result, tagged, collection);
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

HRESULT CollectCandidates(IHTMLDocument2* document, const Context& context, std::string_view tag,
                          Candidates& candidates) {
  const size_t slashes = tag.starts_with("//") ? 2 : 1;
  if (!tag.starts_with('/')) return S_OK;
  const std::string_view name = tag.substr(slashes);
  candidates.one_tag = name != "*";
  if (context == nullptr) return FromDocument(document, name, &candidates.collection);
  return slashes == 2 ? Descendants(context.Get(), name, &candidates.collection)
                      : Children(context.Get(), name, &candidates.collection);
}

}  // namespace quillmate
