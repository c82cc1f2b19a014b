// The command that tells what an element is: where, how large, and what it says.
#include <new>
#include <optional>
#include <string>
#include <utility>

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
/// @return nothing when a call failed.
std::optional<com::Bstr> TextOf(IHTMLElement* element, dom::ControlKind kind) {
  auto text = kind != dom::ControlKind::kOther ? dom::ReadValue(element, kind) : com::Bstr();
  const bool shows_content = kind == dom::ControlKind::kOther || kind == dom::ControlKind::kButton;
  if (text && text->empty() && shows_content && FAILED(element->get_innerText(text->put()))) return {};
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

/// @return null when the element cannot be asked any more.
JsonPtr Describe(IHTMLElement* element, const Rectangle& place) {
  com::Bstr tag;
  if (FAILED(element->get_tagName(tag.put()))) return nullptr;
  const auto text = TextOf(element, dom::ControlKindOf(tag.view()));
  if (!text) return nullptr;
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
  cJSON_AddStringToObject(info.get(), messages::kText, com::ToAnsi(text->view()).c_str());
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
  auto info = Describe(element->Get(), place->rectangle);
  return info != nullptr ? api::Structured(std::move(info)) : api::Fail(messages::kElementNotFound);
}

}  // namespace quillmate::capture
