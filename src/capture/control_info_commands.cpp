// The command that tells what an element is: where, how large, and what it says.
#include <new>
#include <optional>
#include <string>
#include <utility>

#include "api/messages.h"
#include "com/encoding.h"
#include "commands.h"
#include "dom/control_value.h"
#include "locate/element_search.h"
#include "locate/geometry.h"
#include "session/current_page.h"

namespace quillmate {
namespace {

/// A form control's value. A button's is rarely set, and then its caption says what it is.
/// @return nothing when a call failed.
std::optional<com::Bstr> TextOf(IHTMLElement* element, ControlKind kind) {
  auto text = kind != ControlKind::kOther ? ReadValue(element, kind) : com::Bstr();
  const bool shows_content = kind == ControlKind::kOther || kind == ControlKind::kButton;
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
com::JsonPtr Describe(IHTMLElement* element, const Rectangle& place) {
  com::Bstr tag;
  if (FAILED(element->get_tagName(tag.put()))) return nullptr;
  const auto text = TextOf(element, ControlKindOf(tag.view()));
  if (!text) return nullptr;
  com::JsonPtr info(cJSON_CreateObject());
  if (info == nullptr) throw std::bad_alloc();
  cJSON_AddItemToObject(
      info.get(), "rect",
      NumbersObject(
          {{"left", place.left}, {"top", place.top}, {"right", place.right}, {"bottom", place.bottom}}));
  cJSON_AddItemToObject(
      info.get(), "size",
      NumbersObject({{"width", place.right - place.left}, {"height", place.bottom - place.top}}));
  cJSON_AddStringToObject(info.get(), "tagname", com::ToAnsi(tag.view()).c_str());
  cJSON_AddStringToObject(info.get(), "text", com::ToAnsi(text->view()).c_str());
  return info;
}

}  // namespace

Result GetControlInfo(Session& session, const CommandParams& params) {
  const auto element = ResolveTargetElement(session, params);
  if (!element) return element.error();
  const auto page = WalkFrames(session);
  if (!page) return Fail(messages::kElementNotFound);
  const auto place = GetElementScrolledIntoView(session, *page, element->Get());
  if (!place) return Fail(messages::kGetElementposFailed);
  auto info = Describe(element->Get(), place->rectangle);
  return info != nullptr ? Structured(std::move(info)) : Fail(messages::kElementNotFound);
}

}  // namespace quillmate
