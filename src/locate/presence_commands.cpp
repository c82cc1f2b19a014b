// The commands that ask whether an element is there, count elements, or wait for one to appear or go.
#include <windows.h>
#include <mshtml.h>
#include <string>

#include "api/messages.h"
#include "com/call_limit.h"
#include "com/encoding.h"
#include "com/owned.h"
#include "com/process.h"
#include "commands.h"
#include "locate/current_page.h"
#include "locate/document_search.h"

namespace quillmate {
namespace {

enum class Display {
  kShown,
  kHidden,
  /// A call failed on its way to the page.
  kUnknown
};

/// @return S_OK when the element's own display is a value other than none, S_FALSE when it is none or there
/// is no value, else the call's failure.
HRESULT HasDisplay(IHTMLElement* element) {
  com::ComPtr<IHTMLElement2> styled;
  com::ComPtr<IHTMLCurrentStyle> style;
  com::Bstr display;
  HRESULT result = com::QueryKnown(element, styled);
  if (SUCCEEDED(result)) result = styled->get_currentStyle(&style);
  if (SUCCEEDED(result) && style != nullptr) result = style->get_display(display.put());
  if (FAILED(result)) return result;
  if (display.get() == nullptr) return S_FALSE;
  const com::Bstr none(L"none");
  const HRESULT order = VarBstrCmp(display.get(), none.get(), LOCALE_USER_DEFAULT, 0);
  return order == static_cast<HRESULT>(VARCMP_EQ) ? S_FALSE : S_OK;
}

Display NotShown(HRESULT result) {
  return com::FailedInTransit(result) ? Display::kUnknown : Display::kHidden;
}

/// An element is shown when neither it nor any of its ancestors has a computed display of none. Size,
/// opacity, the visibility property and the scroll position play no part. An element without a style, or
/// null, is hidden.
Display ReadDisplay(com::ComPtr<IHTMLElement> element) {
  while (element != nullptr) {
    HRESULT result = HasDisplay(element.Get());
    if (result != S_OK) return NotShown(result);
    com::ComPtr<IHTMLElement> parent;
    result = element->get_parentElement(&parent);
    if (FAILED(result)) return NotShown(result);
    if (parent == nullptr || com::IsSameObject(parent.Get(), element.Get())) return Display::kShown;
    element = std::move(parent);
  }
  return Display::kHidden;
}

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
