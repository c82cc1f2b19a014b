// The commands that ask whether an element is there, count elements, or wait for one to appear or go.
#include <string>

#include "api/messages.h"
#include "com/bstr.h"
#include "com/encoding.h"
#include "com/poll.h"
#include "com/variant.h"
#include "commands.h"
#include "locate/document_search.h"
#include "locate/element_search.h"
#include "locate/visibility.h"
#include "session/current_page.h"

namespace quillmate {
namespace {

constexpr int kWaitAttempts = 10;
constexpr std::chrono::seconds kWaitInterval(1);

enum class Presence {
  kThere,
  kNotThere,
  /// The page did not answer, so nobody knows.
  kUnknown
};

Presence PresenceOf(Display display) {
  if (display == Display::kUnknown) return Presence::kUnknown;
  return display == Display::kShown ? Presence::kThere : Presence::kNotThere;
}

/// Whether the element is there: on the page, and with "check_type" exactly "visible" also displayed.
Presence Look(const ElementOrFailure& element, const std::string& check_type) {
  if (!element) return element.error().page_answered ? Presence::kNotThere : Presence::kUnknown;
  return check_type == "visible" ? PresenceOf(ReadDisplay(*element)) : Presence::kThere;
}

Result Answer(Presence presence) {
  if (presence == Presence::kUnknown) return Fail(messages::kElementNotFound);
  return Boolean(presence == Presence::kThere);
}

/// Looks once a second until the element is there, or is not. A page that does not answer is busy: that
/// attempt counts, and the wait goes on.
Result WaitUntil(Session& session, Presence wanted, const CommandParams& params, const char* failure) {
  const auto target = Locator(params);
  if (!target) return target.error();
  const std::string check_type = params.Get("check_type");
  auto page = WalkFrames(session);
  if (!page && page.error() == PageMissing::kGone) return Fail(messages::kFrameNotFound);
  for (int attempt = 0; attempt < kWaitAttempts; ++attempt) {
    // Asked briefly, a page that hangs does not make ten looks take a minute.
    const bool answers = attempt == 0 || AskTarget(session, kWaitInterval) != Response::kSilent;
    if (attempt > 0 && answers) page = WalkFrames(session);
    if (answers && Look(FindElement(session, page, *target), check_type) == wanted) return Done();
    com::Pause(kWaitInterval);
  }
  return {false, false, failure};
}

LONG CountChildren(IHTMLElement* element, const std::string& tag) {
  com::ComPtr<IDispatch> children;
  com::ComPtr<IDispatch> tagged;
  if (FAILED(element->get_children(&children))) return 0;
  const auto all = com::Query<IHTMLElementCollection>(children);
  if (all == nullptr || FAILED(all->tags(com::Variant::Text(com::FromAnsi(tag)).get(), &tagged))) return 0;
  const auto matching = com::Query<IHTMLElementCollection>(tagged);
  LONG count = 0;
  return matching != nullptr && SUCCEEDED(matching->get_length(&count)) && count > 0 ? count : 0;
}

}  // namespace

Result GetElement(Session& session, const CommandParams& params) {
  auto element = ResolveTargetElement(session, params);
  if (!element) return element.error();
  if (auto name = TextValue(params, "return")) {
    session.elements().Remember(std::move(*name), std::move(*element));
  }
  return Done();
}

Result HasElement(Session& session, const CommandParams& params) {
  const auto target = Locator(params);
  if (!target) return target.error();
  return Answer(Look(FindElement(session, *target), params.Get("check_type")));
}

Result IsElementExist(Session& session, const CommandParams& params) {
  const auto target = Locator(params);
  if (!target) return target.error();
  return Answer(Look(FindElement(session, *target), {}));
}

Result WaitShow(Session& session, const CommandParams& params) {
  return WaitUntil(session, Presence::kThere, params, messages::kWaitElementShowFailed);
}

Result WaitDisappear(Session& session, const CommandParams& params) {
  return WaitUntil(session, Presence::kNotThere, params, messages::kWaitElementDisappearFailed);
}

Result GetElementCount(Session& session, const CommandParams& params) {
  const auto target = Locator(params);
  if (!target) return target.error();
  const auto page = WalkFrames(session);
  if (!page) return page.error() == PageMissing::kGone ? Number(0) : Fail(messages::kElementNotFound);
  const auto count = CountMatches(page->back().document.Get(), *target);
  return count ? Number(*count) : Fail(messages::kElementNotFound);
}

Result GetChildElementCount(Session& session, const CommandParams& params) {
  const auto element = ResolveTargetElement(session, params);
  if (!element) return element.error();
  const auto tag = TextValue(params);
  if (!tag) return tag.error();
  return Number(CountChildren(element->Get(), *tag));
}

}  // namespace quillmate
