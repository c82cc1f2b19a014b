// The path evaluator walks the branches of a path depth first, on a stack of its own: level 0 holds the
// document, level n the matches of step n inside one match of the step before. The newest level gives its
// next match, which either is a result (the path ends there) or opens the level of the next step; a level
// that has no more is dropped, and the one below goes on. So the results come in the order of the branches,
// a search for the first result fetches no match that it does not need, and a path of tens of thousands of
// steps costs memory, not the thread's stack.
#include "locate/path_query.h"

#include <algorithm>
#include <cstdio>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "api/messages.h"
#include "com/call_limit.h"
#include "com/encoding.h"
#include "locate/locator_syntax.h"
#include "locate/path_steps.h"

namespace quillmate {
namespace {

/// The matches of one step inside one context.
class Level {
 public:
  explicit Level(Context only) : only_(std::move(only)) {}
  /// @param results how many results there were before.
  Level(CollectionMatches matches, std::int32_t results)
      : matches_(std::move(matches)), results_before_(results) {}

  HRESULT Next(Context& context) {
    if (only_) {
      context = *std::exchange(only_, std::nullopt);
      return S_OK;
    }
    return matches_ ? matches_->Next(context) : S_FALSE;
  }
  void Restart(Context only) { only_ = std::move(only); }
  std::int32_t results_before() const { return results_before_; }

  /// Whether there was a match so far.
  bool fruitful = false;

 private:
  std::optional<Context> only_;
  std::optional<CollectionMatches> matches_;
  std::int32_t results_before_ = 0;
};

class XPathQuery {
 public:
  XPathQuery(IHTMLDocument2* document, std::string_view path, Wanted wanted)
      : document_(document), steps_(SplitPath(path, com::IsLeadByte)), wanted_(wanted) {}

  FoundOrFailure Run() {
    levels_.emplace_back(Context());
    while (!levels_.empty() && !IsDone()) {
      const size_t step = levels_.size() - 1;
      if (FAILED(GoOn())) return std::unexpected(FailureAt(std::min(step, steps_.size() - 1), false));
    }
    if (found_.count == 0) return std::unexpected(FailureAt(*failed_step_, true));
    return std::move(found_);
  }

 private:
  bool IsDone() const { return wanted_ == Wanted::kFirst && found_.count > 0; }

  /// @return a failure only when the page could not be asked.
  HRESULT GoOn() {
    Context context;
    const HRESULT result = levels_.back().Next(context);
    if (result == S_OK) return Advance(context);
    if (com::FailedInTransit(result)) return result;
    CloseLevel(FAILED(result));
    return S_OK;
  }

  HRESULT Advance(const Context& context) {
    const size_t step = levels_.size() - 1;
    if (step < steps_.size()) {
      levels_.back().fruitful = true;
      return OpenLevel(context, step);
    }
    // A path that ends at the document ends at no element.
    if (context == nullptr) return S_OK;
    levels_.back().fruitful = true;
    if (found_.first == nullptr) found_.first = context;
    ++found_.count;
    return S_OK;
  }

  HRESULT OpenLevel(const Context& context, size_t number) {
    const LocatorStep& step = steps_[number];
    if (step.selector.empty() && step.head == "/.") return Push(Level(context));
    if (step.selector.empty() && step.head == "/..") return OpenParent(context);
    Selector selector = ParseSelector(step.selector);
    if (TakesNothing(selector)) return OpenMatches({}, EveryItem{}, number);
    if (number == 0 && !std::exchange(document_asked_, true)) {
      // Before the selector is moved: the order of a call's arguments is not given.
      auto answer = AskDocument(document_, step, selector, wanted_);
      return OpenFirstStep(std::move(answer), std::move(selector));
    }
    Candidates candidates;
    const HRESULT result = CollectCandidates(document_, context, step.head, candidates);
    if (com::FailedInTransit(result)) return result;
    return OpenMatches(SUCCEEDED(result) ? std::move(candidates) : Candidates{}, std::move(selector), number);
  }

  HRESULT OpenFirstStep(FirstStepAnswer answer, Selector selector) {
    if (const auto* unasked = std::get_if<Unasked>(&answer)) return unasked->result;
    if (std::holds_alternative<NoMatch>(answer)) return OpenMatches({}, EveryItem{}, 0);
    if (auto* among = std::get_if<AmongCandidates>(&answer))
      return OpenMatches(std::move(among->candidates), std::move(selector), 0);
    // Level 0 gives the document once more, for a walk: when the match leads to no result, another one may.
    levels_.front().Restart(Context());
    if (auto* first = std::get_if<FirstMatch>(&answer)) return Push(Level(std::move(first->element)));
    return S_OK;
  }

  HRESULT OpenParent(const Context& context) {
    Context parent;
    if (context != nullptr) {
      const HRESULT result = context->get_parentElement(&parent);
      if (com::FailedInTransit(result)) return result;
      if (FAILED(result)) return OpenMatches({}, EveryItem{}, levels_.size() - 1);
      if (com::IsSameObject(parent.Get(), context.Get())) parent.Reset();
    }
    return Push(Level(std::move(parent)));
  }

  HRESULT OpenMatches(Candidates candidates, Selector selector, size_t step) {
    CollectionMatches matches(std::move(candidates), std::move(selector), wanted_);
    if (wanted_ == Wanted::kCount && step + 1 == steps_.size()) return AddCount(matches, step);
    return Push(Level(std::move(matches), found_.count));
  }

  HRESULT AddCount(CollectionMatches& matches, size_t step) {
    std::int32_t count = 0;
    const HRESULT result = matches.Count(count);
    if (com::FailedInTransit(result)) return result;
    if (FAILED(result) || count == 0) RecordFailure(step);
    if (SUCCEEDED(result)) found_.count += count;
    return S_OK;
  }

  HRESULT Push(Level level) {
    levels_.push_back(std::move(level));
    return S_OK;
  }

  /// @param cut_short whether the walk ended before its collection did: then the step matches nothing.
  void CloseLevel(bool cut_short) {
    Level& level = levels_.back();
    if (cut_short) {
      found_.count = level.results_before();
      level.fruitful = false;
    }
    if (!level.fruitful) RecordFailure(levels_.size() - 2);
    levels_.pop_back();
  }

  /// The deepest failing step is reported; on a tie, the later one.
  void RecordFailure(size_t step) {
    if (!failed_step_ || step >= *failed_step_) failed_step_ = step;
  }

  SearchFailure FailureAt(size_t number, bool page_answered) const {
    const LocatorStep& step = steps_[number];
    char message[1024];
    const int length =
        std::snprintf(message, sizeof message, "Find element failed in %d's Xpath node [ %s[%s] ]!",
                      static_cast<int>(number + 1), step.head.c_str(), step.selector.c_str());
    const bool fits = length >= 0 && length < static_cast<int>(sizeof message);
    return {{fits ? message : messages::kElementNotFound}, page_answered};
  }

  IHTMLDocument2* document_;
  std::vector<LocatorStep> steps_;
  Wanted wanted_;
  std::vector<Level> levels_;
  bool document_asked_ = false;
  Found found_;
  std::optional<size_t> failed_step_;
};

}  // namespace

FoundOrFailure EvaluatePath(IHTMLDocument2* document, std::string_view path, Wanted wanted) {
  return XPathQuery(document, path, wanted).Run();
}

}  // namespace quillmate
