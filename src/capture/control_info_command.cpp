// The command that tells what an element is: where, how large, and what it says.
#include <new>
#include <string>

#include "api/messages.h"
#include "capture/commands.h"
#include "com/encoding.h"
#include "dom/control_value.h"
#include "locate/element_search.h"
#include "locate/frames.h"
#include "locate/geometry.h"

namespace quillmate::capture {
namespace {

using api::CommandParams;
using api::JsonPtr;
using api::Result;
using locate::Rectangle;
namespace messages = api::messages;

/// A form control's value. A button's is rarely set, and then its caption says what it is.
com::Bstr TextOf(IHTMLElement* element, dom::ControlKind kind) {
  com::Bstr text;
  if (kind != dom::ControlKind::kOther) text = dom::ReadValue(element, kind).value_or(com::Bstr());
  const bool shows_content = kind == dom::ControlKind::kOther || kind == dom::ControlKind::kButton;
  if (text.empty() && shows_content) element->get_innerText(text.put());
  return text;
}

struct Member {
  const char* name;
  int value;
};

cJSON* NumbersObject(std::initializer_list<Member> members) {
  cJSON* object = cJSON_CreateObject();
  for (const Member& member : members) cJSON_AddNumberToObject(object, member.name, member.value);
  return object;
}

JsonPtr Describe(IHTMLElement* element, const Rectangle& place) {
  com::Bstr tag;
  element->get_tagName(tag.put());
  const auto kind = dom::GetControlKind(element).value_or(dom::ControlKind::kOther);
  JsonPtr info(cJSON_CreateObject());
  if (info == nullptr) throw std::bad_alloc();
  cJSON_AddItemToObject(
      info.get(), messages::kRect,
      NumbersObject(
          {{"left", place.left}, {"top", place.top}, {"right", place.right}, {"bottom", place.bottom}}));
  cJSON_AddItemToObject(
      info.get(), messages::kSize,
      NumbersObject({{"width", place.right - place.left}, {"height", place.bottom - place.top}}));
  cJSON_AddStringToObject(info.get(), messages::kTagname, com::ToAnsi(tag.view()).c_str());
  cJSON_AddStringToObject(info.get(), messages::kText, com::ToAnsi(TextOf(element, kind).view()).c_str());
  return info;
}

}  // namespace

Result GetControlInfo(const CommandParams& params) {
  const auto element = locate::ResolveTargetElement(params);
  if (!element) return element.error();
  const auto document = locate::GetFrameDocument();
  if (document == nullptr) return api::Fail(messages::kElementNotFound);
  const auto place = locate::GetElementScrolledIntoView(document.Get(), element->Get());
  if (!place) return api::Fail(messages::kGetElementposFailed);
  return api::Structured(Describe(element->Get(), place->rectangle));
}

}  // namespace quillmate::capture
