// The commands that ask whether an element is there, count elements, or wait for one to appear or go.
#include <string>

#include "api/messages.h"
#include "api/validation.h"
#include "com/bstr.h"
#include "com/encoding.h"
#include "com/variant.h"
#include "locate/commands.h"
#include "locate/document_search.h"
#include "locate/element_registry.h"
#include "locate/element_search.h"
#include "locate/frames.h"
#include "locate/visibility.h"

namespace quillmate::locate {
namespace {

using api::CommandParams;
using api::Fail;
using api::Result;
using com::ComPtr;
namespace messages = api::messages;

constexpr int kWaitAttempts = 10;
constexpr DWORD kWaitIntervalMs = 1000;

/// Whether the element is there: on the page, and with "check_type" exactly "visible" also displayed.
bool IsShown(const std::string& target, const std::string& check_type) {
  const auto element = FindElement(target);
  return element && (check_type != "visible" || IsElementDisplayed(*element));
}

/// Looks once a second until the element is there, or is not.
Result WaitUntil(bool shown, const CommandParams& params, const char* failure) {
  const std::string target = params.Get("target");
  if (!api::IsElementLocator(target)) return Fail(messages::kInvalidElementLocator);
  const std::string check_type = params.Get("check_type");
  if (GetFrameDocument() == nullptr) return Fail(messages::kFrameNotFound);
  for (int attempt = 0; attempt < kWaitAttempts; ++attempt) {
    if (IsShown(target, check_type) == shown) return api::Done();
    Sleep(kWaitIntervalMs);
  }
  return api::Boolean(false, false, failure);
}

LONG CountChildren(IHTMLElement* element, const std::string& tag) {
  ComPtr<IDispatch> children;
  ComPtr<IDispatch> tagged;
  if (FAILED(element->get_children(&children))) return 0;
  const auto all = com::Query<IHTMLElementCollection>(children);
  if (all == nullptr || FAILED(all->tags(com::Variant::Text(com::FromAnsi(tag)).get(), &tagged))) return 0;
  const auto matching = com::Query<IHTMLElementCollection>(tagged);
  LONG count = 0;
  return matching != nullptr && SUCCEEDED(matching->get_length(&count)) && count > 0 ? count : 0;
}

}  // namespace

Result GetElement(const CommandParams& params) {
  auto element = ResolveTargetElement(params);
  if (!element) return element.error();
  std::string name = params.Get("return");
  if (api::IsTextValue(name)) Remember(std::move(name), std::move(*element));
  return api::Done();
}

Result HasElement(const CommandParams& params) {
  const std::string target = params.Get("target");
  if (!api::IsElementLocator(target)) return Fail(messages::kInvalidElementLocator);
  return api::Boolean(true, IsShown(target, params.Get("check_type")));
}

Result IsElementExist(const CommandParams& params) {
  const std::string target = params.Get("target");
  if (!api::IsElementLocator(target)) return Fail(messages::kInvalidElementLocator);
  return api::Boolean(true, FindElement(target).has_value());
}

Result WaitShow(const CommandParams& params) {
  return WaitUntil(true, params, messages::kWaitElementShowFailed);
}

Result WaitDisappear(const CommandParams& params) {
  return WaitUntil(false, params, messages::kWaitElementDisappearFailed);
}

Result GetElementCount(const CommandParams& params) {
  const std::string target = params.Get("target");
  if (!api::IsElementLocator(target)) return Fail(messages::kInvalidElementLocator);
  const auto document = GetFrameDocument();
  if (document == nullptr) return api::Number(true, 0);
  const auto elements = FindElements(document.Get(), target);
  return api::Number(true, elements ? static_cast<std::int32_t>(elements->size()) : 0);
}

Result GetChildElementCount(const CommandParams& params) {
  const auto element = ResolveTargetElement(params);
  if (!element) return element.error();
  const std::string tag = params.Get("value");
  if (!api::IsTextValue(tag)) return Fail(messages::kInvalidParameter);
  return api::Number(true, CountChildren(element->Get(), tag));
}

}  // namespace quillmate::locate
