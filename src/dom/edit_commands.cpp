// The commands that fill and empty edit fields.
#include <string>

#include "api/messages.h"
#include "com/encoding.h"
#include "com/poll.h"
#include "commands.h"
#include "dom/control_value.h"
#include "dom/element_keys.h"
#include "locate/element_search.h"

namespace quillmate {
namespace {

/// How long a page gets to follow the keys, or to settle, before a field is written.
constexpr std::chrono::milliseconds kSettleTime(500);

struct Edit {
  com::ComPtr<IHTMLElement> element;
  com::Bstr text;
};

/// Reads "target" and "value", checks both, and only then looks for the element.
OrFailure<Edit> ReadEdit(Session& session, const CommandParams& params) {
  const auto target = Locator(params);
  if (!target) return std::unexpected(target.error());
  const auto value = TextValue(params);
  if (!value) return std::unexpected(value.error());
  auto element = FindElement(session, *target);
  if (!element) return std::unexpected(std::move(element.error()));
  return Edit{std::move(*element), com::Bstr(com::FromAnsi(*value))};
}

OrFailure<void> EmptyByKeys(Session& session, IHTMLElement* element) {
  return PressKeysOnElement(session, element, {"{ctrl}a", "{delete}"});
}

/// Writes the attribute, a text area's text, and the control's own value; stops at the first that fails.
bool WriteAppended(IHTMLElement* element, ControlKind kind, const com::Bstr& text) {
  if (FAILED(WriteValueAttribute(element, text))) return false;
  if (kind == ControlKind::kTextArea && FAILED(element->put_innerText(text.get()))) return false;
  return SUCCEEDED(WriteOwnValue(element, kind, text));
}

bool IsEditable(IHTMLElement* element) {
  const auto newer = com::Query<IHTMLElement3>(element);
  VARIANT_BOOL editable = VARIANT_FALSE;
  return newer != nullptr && SUCCEEDED(newer->get_isContentEditable(&editable)) && editable != VARIANT_FALSE;
}

/// The second way of putting text into an element, besides its attribute.
HRESULT WriteShownText(IHTMLElement* element, const com::Bstr& text) {
  const auto kind = ReadControlKind(element);
  if (kind == ControlKind::kInput || kind == ControlKind::kTextArea)
    return WriteOwnValue(element, *kind, text);
  return IsEditable(element) ? element->put_innerText(text.get()) : E_FAIL;
}

/// Empties the value attribute and what the element shows of it.
/// @return the outcome of the last call.
HRESULT EmptyByValue(IHTMLElement* element, ControlKind kind) {
  const com::Bstr nothing;
  const HRESULT attribute = WriteValueAttribute(element, nothing);
  if (kind == ControlKind::kInput) return WriteOwnValue(element, kind, nothing);
  if (kind == ControlKind::kTextArea) return element->put_innerText(nothing.get());
  return attribute;
}

}  // namespace

Result TypeText(Session& session, const CommandParams& params) {
  const auto edit = ReadEdit(session, params);
  if (!edit) return edit.error();
  if (const auto emptied = EmptyByKeys(session, edit->element.Get()); !emptied) return emptied.error();
  com::Pause(kSettleTime);
  if (FAILED(WriteValueAttribute(edit->element.Get(), edit->text)))
    return Fail(messages::kSetAttributeFailed);
  const auto kind = ReadControlKind(edit->element.Get());
  if (kind) WriteOwnValue(edit->element.Get(), *kind, edit->text);
  return Done();
}

Result Append(Session& session, const CommandParams& params) {
  const auto edit = ReadEdit(session, params);
  if (!edit) return edit.error();
  IHTMLElement* element = edit->element.Get();
  const auto kind = ReadControlKind(element);
  const auto held = kind ? ReadValue(element, *kind) : std::nullopt;
  if (!held) return Fail(messages::kFailedToAddTextToTheEditBox);
  com::Pause(kSettleTime);
  const com::Bstr text(std::wstring(held->view()).append(edit->text.view()));
  return WriteAppended(element, *kind, text) ? Done() : Fail(messages::kFailedToAddTextToTheEditBox);
}

Result Clear(Session& session, const CommandParams& params) {
  const auto element = ResolveTargetElement(session, params);
  if (!element) return element.error();
  const auto kind = ReadControlKind(element->Get());
  const HRESULT last = EmptyByValue(element->Get(), kind.value_or(ControlKind::kOther));
  // Whether the keys arrived does not matter: the value is already empty.
  static_cast<void>(EmptyByKeys(session, element->Get()));
  return last == S_OK ? Done() : Fail(messages::kFailedToClearTheEditBox);
}

Result SendKeysToElement(Session& session, const CommandParams& params) {
  const auto edit = ReadEdit(session, params);
  if (!edit) return edit.error();
  const HRESULT attribute = WriteValueAttribute(edit->element.Get(), edit->text);
  const HRESULT shown = WriteShownText(edit->element.Get(), edit->text);
  return SUCCEEDED(attribute) || SUCCEEDED(shown) ? Done() : Fail(messages::kSendKeysToElementFailed);
}

}  // namespace quillmate
