// The command that tells what an element is: where, how large, and what it says.
#include <new>
#include <optional>
#include <string>
#include <utility>

#include "api/messages.h"
#include "com/encoding.h"
#include "commands.h"
#include "dom/control_value.h"
#include "locate/current_page.h"
#include "locate/geometry.h"

namespace quillmate {
namespace {

/// A form control's value; any other element's text.
/// @return nothing when a call failed.
std::optional<com::Bstr> TextOf(IHTMLElement* element, ControlKind kind) {
  if (kind != ControlKind::kOther) return ReadValue(element, kind);
  com::Bstr text;
  if (FAILED(element->get_innerText(text.put()))) return std::nullopt;
  return text;
}

struct Member {
  const char* name;
  int value;
};

/// cJSON reports a missing allocation by null. @throws std::bad_alloc
void Require(const void* allocated) {
  if (allocated == nullptr) throw std::bad_alloc();
}

void AddNumbers(cJSON* info, const char* name, std::initializer_list<Member> members) {
  cJSON* object = cJSON_AddObjectToObject(info, name);
  Require(object);
  for (const Member& member : members) Require(cJSON_AddNumberToObject(object, member.name, member.value));
}

void AddText(cJSON* info, const char* name, const com::Bstr& text) {
  Require(cJSON_AddStringToObject(info, name, com::ToAnsi(text.view()).c_str()));
}

/// @return null when the element cannot be asked any more.
com::JsonPtr Describe(IHTMLElement* element, const Rectangle& place) {
  com::Bstr tag;
  if (FAILED(element->get_tagName(tag.put()))) return nullptr;
  const auto text = TextOf(element, ControlKindOf(tag.view()));
  if (!text) return nullptr;
  com::JsonPtr info(cJSON_CreateObject());
  Require(info.get());
  AddNumbers(info.get(), "rect",
             {{"left", place.left}, {"top", place.top}, {"right", place.right}, {"bottom", place.bottom}});
  AddNumbers(info.get(), "size", {{"width", place.right - place.left}, {"height", place.bottom - place.top}});
  AddText(info.get(), "tagname", tag);
  AddText(info.get(), "text", *text);
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
