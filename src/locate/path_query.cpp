// The path evaluator: branches are walked depth first, each match of a step fetched only when its branch
// begins.
#include "locate/path_query.h"

#include <cstdio>
#include <optional>
#include <string>
#include <utility>

#include "api/messages.h"
#include "com/bstr.h"
#include "com/encoding.h"
#include "com/variant.h"
#include "locate/collections.h"
#include "locate/locator_syntax.h"

namespace quillmate {
namespace {

using Collection = com::ComPtr<IHTMLElementCollection>;

/// What a step is searched from: an element, or the document when null.
using Context = com::ComPtr<IHTMLElement>;

Collection AsCollection(const com::ComPtr<IDispatch>& object) {
  return com::Query<IHTMLElementCollection>(object);
}

Collection CollectFromDocument(IHTMLDocument2* document, std::string_view tag) {
  // One slash and two mean the same here: /div as a first step finds every div of the document.
  const size_t slashes = tag.starts_with("//") ? 2 : 1;
  if (!tag.starts_with('/')) return {};
  const std::string_view name = tag.substr(slashes);
  Collection collection;
  if (name == "*") {
    document->get_all(&collection);
  } else if (const auto searchable = com::Query<IHTMLDocument3>(document)) {
    searchable->getElementsByTagName(com::Bstr(com::FromAnsi(name)).get(), &collection);
  }
  return collection;
}

Collection CollectDescendants(IHTMLElement* element, std::string_view name) {
  if (name == "*") {
    com::ComPtr<IDispatch> all;
    element->get_all(&all);
    return AsCollection(all);
  }
  Collection collection;
  if (const auto searchable = com::Query<IHTMLElement2>(element)) {
    searchable->getElementsByTagName(com::Bstr(com::FromAnsi(name)).get(), &collection);
  }
  return collection;
}

Collection CollectChildren(IHTMLElement* element, std::string_view name) {
  com::ComPtr<IDispatch> object;
  element->get_children(&object);
  auto children = AsCollection(object);
  if (children == nullptr || name == "*") return children;
  com::ComPtr<IDispatch> tagged;
  children->tags(com::Variant::Text(com::FromAnsi(name)).get(), &tagged);
  return AsCollection(tagged);
}

Collection CollectFromElement(IHTMLElement* element, std::string_view tag) {
  if (tag.starts_with("//")) return CollectDescendants(element, tag.substr(2));
  if (tag.starts_with('/')) return CollectChildren(element, tag.substr(1));
  return {};
}

Collection Collect(IHTMLDocument2* document, const Context& context, std::string_view tag) {
  return context == nullptr ? CollectFromDocument(document, tag) : CollectFromElement(context.Get(), tag);
}

/// @return the parent; the document when there is none.
Context ParentOf(const Context& context) {
  Context parent;
  if (context == nullptr || FAILED(context->get_parentElement(&parent))) return {};
  return com::IsSameObject(parent.Get(), context.Get()) ? Context() : parent;
}

/// What a step of the form //*[@id='value'] finds first, asked of the document directly instead of every
/// element; null when the step has another form or the answer is not exact (document modes below 8 also
/// answer with names).
Context FindDirectly(IHTMLDocument2* document, const LocatorStep& step) {
  const Selector selector = ParseSelector(step.selector);
  const auto* predicate = std::get_if<Predicate>(&selector);
  if (predicate == nullptr || predicate->test != Predicate::Test::kEquals ||
      predicate->source != Predicate::Source::kId || (step.head != "//*" && step.head != "/*")) {
    return {};
  }
  Context element;
  const auto searchable = com::Query<IHTMLDocument3>(document);
  if (searchable == nullptr ||
      FAILED(searchable->getElementById(com::Bstr(com::FromAnsi(predicate->value)).get(), &element)) ||
      element == nullptr || !MatchPredicate(element.Get(), *predicate)) {
    return {};
  }
  return element;
}

/// The contexts that one step makes out of one context.
class StepMatches {
 public:
  explicit StepMatches(Context only) : first_(std::move(only)), rest_({}, EveryItem{}) {}
  /// @param results how many results there were before.
  StepMatches(CollectionMatches matches, size_t results)
      : rest_(std::move(matches)), results_before_(results) {}

  std::optional<Context> Next() {
    if (first_) return std::exchange(first_, std::nullopt);
    auto element = rest_.Next();
    return element != nullptr ? std::optional(std::move(element)) : std::nullopt;
  }

  bool IsCutShort() const { return rest_.IsCutShort(); }
  size_t results_before() const { return results_before_; }

  /// Whether a match was good for anything so far.
  bool fruitful = false;

 private:
  std::optional<Context> first_;
  CollectionMatches rest_;
  size_t results_before_ = 0;
};

class XPathQuery {
 public:
  XPathQuery(IHTMLDocument2* document, std::string_view path, Wanted wanted)
      : document_(document), steps_(SplitPath(path)), wanted_(wanted) {}

  OrFailure<Elements> Run() {
    // The branches under way, one level a step. Paths may have tens of thousands of steps: no recursion.
    std::vector<StepMatches> levels;
    levels.emplace_back(Context());
    // What is found directly goes first; should its branch fail, the whole search still follows.
    if (auto direct = FirstDirectMatch()) levels.emplace_back(std::move(direct));
    while (!levels.empty() && !IsDone()) {
      if (const auto context = levels.back().Next()) {
        Advance(levels, *context);
      } else {
        if (levels.back().IsCutShort()) DropMatches(levels.back());
        if (!levels.back().fruitful) RecordFailure(levels.size() - 2);
        levels.pop_back();
      }
    }
    if (result_.empty()) return std::unexpected(FailureMessage());
    return std::move(result_);
  }

 private:
  Context FirstDirectMatch() const {
    return wanted_ == Wanted::kFirst ? FindDirectly(document_, steps_.front()) : Context();
  }

  bool IsDone() const { return wanted_ == Wanted::kFirst && !result_.empty(); }

  void Advance(std::vector<StepMatches>& levels, const Context& context) {
    const size_t step = levels.size() - 1;
    if (step < steps_.size()) {
      levels.back().fruitful = true;
      levels.push_back(Match(context, steps_[step]));
    } else if (context != nullptr) {
      levels.back().fruitful = true;
      result_.push_back(context);
    }
  }

  StepMatches Match(const Context& context, const LocatorStep& step) const {
    if (step.selector.empty() && step.head == "/.") return StepMatches(context);
    if (step.selector.empty() && step.head == "/..") return StepMatches(ParentOf(context));
    Selector selector = ParseSelector(step.selector);
    return {CollectionMatches(Collect(document_, context, step.head), std::move(selector)), result_.size()};
  }

  /// A collection that could not be walked to its end matches nothing.
  void DropMatches(StepMatches& matches) {
    result_.resize(matches.results_before());
    matches.fruitful = false;
  }

  /// The deepest failure is told, the later of two at one depth.
  void RecordFailure(size_t step) {
    if (!failed_step_ || step >= *failed_step_) failed_step_ = step;
  }

  Failure FailureMessage() const {
    const LocatorStep& step = steps_[*failed_step_];
    char message[1024];
    const int length =
        std::snprintf(message, sizeof message, "Find element failed in %d's Xpath node [ %s[%s] ]!",
                      static_cast<int>(*failed_step_ + 1), step.head.c_str(), step.selector.c_str());
    const bool fits = length >= 0 && length < static_cast<int>(sizeof message);
    return {fits ? message : messages::kElementNotFound};
  }

  IHTMLDocument2* document_;
  std::vector<LocatorStep> steps_;
  Wanted wanted_;
  Elements result_;
  std::optional<size_t> failed_step_;
};

}  // namespace

OrFailure<Elements> EvaluatePath(IHTMLDocument2* document, std::string_view path, Wanted wanted) {
  return XPathQuery(document, path, wanted).Run();
}

}  // namespace quillmate
