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

/// Whether the element is there: on the page, and with "check_type" exactly "visible" also displayed.
bool IsShown(Session& session, const std::string& target, const std::string& check_type) {
  const auto element = FindElement(session, target);
  return element && (check_type != "visible" || IsElementDisplayed(*element));
}

/// Looks once a second until the element is there, or is not.
Result WaitUntil(Session& session, bool shown, const CommandParams& params, const char* failure) {
  const auto target = Locator(params);
  if (!target) return target.error();
  const std::string check_type = params.Get("check_type");
  if (GetFrameDocument(session) == nullptr) return Fail(messages::kFrameNotFound);
  const auto is_met = [&] { return IsShown(session, *target, check_type) == shown; };
  if (com::PollUntil(kWaitAttempts, kWaitInterval, is_met)) return Done();
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
  return Boolean(IsShown(session, *target, params.Get("check_type")));
}

Result IsElementExist(Session& session, const CommandParams& params) {
  const auto target = Locator(params);
  if (!target) return target.error();
  return Boolean(FindElement(session, *target).has_value());
}

Result WaitShow(Session& session, const CommandParams& params) {
  return WaitUntil(session, true, params, messages::kWaitElementShowFailed);
}

Result WaitDisappear(Session& session, const CommandParams& params) {
  return WaitUntil(session, false, params, messages::kWaitElementDisappearFailed);
}

Result GetElementCount(Session& session, const CommandParams& params) {
  const auto target = Locator(params);
  if (!target) return target.error();
  const auto document = GetFrameDocument(session);
  if (document == nullptr) return Number(0);
  const auto elements = FindElements(document.Get(), *target);
  return Number(elements ? static_cast<std::int32_t>(elements->size()) : 0);
}

Result GetChildElementCount(Session& session, const CommandParams& params) {
  const auto element = ResolveTargetElement(session, params);
  if (!element) return element.error();
  const auto tag = TextValue(params);
  if (!tag) return tag.error();
  return Number(CountChildren(element->Get(), *tag));
}

}  // namespace quillmate
