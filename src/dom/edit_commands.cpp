// The commands that fill and empty edit fields.
#include <string>

#include "api/messages.h"
#include "api/validation.h"
#include "com/encoding.h"
#include "com/variant.h"
#include "dom/commands.h"
#include "dom/control_value.h"
#include "input/element_keys.h"
#include "locate/element_search.h"

namespace quillmate::dom {
namespace {

using api::CommandParams;
using api::Fail;
using api::Result;
using com::Bstr;
using com::ComPtr;
namespace messages = api::messages;

/// How long a page gets to follow the keys, or to settle, before a field is written.
constexpr DWORD kSettleMs = 500;

struct Edit {
  ComPtr<IHTMLElement> element;
  Bstr text;
};

/// Reads "target" and "value", checks both, and only then looks for the element.
std::expected<Edit, api::Failure> ReadEdit(const CommandParams& params) {
  const std::string target = params.Get("target");
  if (!api::IsElementLocator(target)) return std::unexpected(api::Failure{messages::kInvalidElementLocator});
  const std::string value = params.Get("value");
  if (!api::IsTextValue(value)) return std::unexpected(api::Failure{messages::kInvalidParameter});
  auto element = locate::FindElement(target);
  if (!element) return std::unexpected(std::move(element.error()));
  return Edit{std::move(*element), Bstr(com::FromAnsi(value))};
}

std::optional<api::Failure> EmptyByKeys(IHTMLElement* element) {
  return input::SendKeysToElement(com::Query<IHTMLElement2>(element).Get(), {"{ctrl}a", "{delete}"});
}

/// Writes the attribute, a text area's text, and the control's own value; stops at the first that fails.
bool WriteAppended(IHTMLElement* element, ControlKind kind, const Bstr& text) {
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
HRESULT WriteShownText(IHTMLElement* element, const Bstr& text) {
  const auto kind = GetControlKind(element);
  if (kind == ControlKind::kInput || kind == ControlKind::kTextArea)
    return WriteOwnValue(element, *kind, text);
  return IsEditable(element) ? element->put_innerText(text.get()) : E_FAIL;
}

/// Empties the value attribute and what the element shows of it.
/// @return the outcome of the last call.
HRESULT EmptyByValue(IHTMLElement* element, ControlKind kind) {
  const Bstr nothing;
  const HRESULT attribute = WriteValueAttribute(element, nothing);
  if (kind == ControlKind::kInput) return WriteOwnValue(element, kind, nothing);
  if (kind == ControlKind::kTextArea) return element->put_innerText(nothing.get());
  return attribute;
}

}  // namespace

Result TypeText(const CommandParams& params) {
  const auto edit = ReadEdit(params);
  if (!edit) return edit.error();
  if (const auto failure = EmptyByKeys(edit->element.Get())) return *failure;
  Sleep(kSettleMs);
  if (FAILED(WriteValueAttribute(edit->element.Get(), edit->text)))
    return Fail(messages::kSetAttributeFailed);
  const auto kind = GetControlKind(edit->element.Get());
  if (kind) WriteOwnValue(edit->element.Get(), *kind, edit->text);
  return api::Done();
}

Result Append(const CommandParams& params) {
  const auto edit = ReadEdit(params);
  if (!edit) return edit.error();
  IHTMLElement* element = edit->element.Get();
  const auto kind = GetControlKind(element);
  const auto held = kind ? ReadValue(element, *kind) : std::nullopt;
  if (!held) return Fail(messages::kFailedToAddTextToTheEditBox);
  Sleep(kSettleMs);
  const Bstr text(std::wstring(held->view()).append(edit->text.view()));
  return WriteAppended(element, *kind, text) ? api::Done() : Fail(messages::kFailedToAddTextToTheEditBox);
}

Result Clear(const CommandParams& params) {
  const auto element = locate::ResolveTargetElement(params);
  if (!element) return element.error();
  const auto kind = GetControlKind(element->Get());
  const HRESULT last = EmptyByValue(element->Get(), kind.value_or(ControlKind::kOther));
  // Whether the keys arrived does not matter: the value is already empty.
  EmptyByKeys(element->Get());
  return last == S_OK ? api::Done() : Fail(messages::kFailedToClearTheEditBox);
}

Result SendKeysToElement(const CommandParams& params) {
  const auto edit = ReadEdit(params);
  if (!edit) return edit.error();
  const HRESULT attribute = WriteValueAttribute(edit->element.Get(), edit->text);
  const HRESULT shown = WriteShownText(edit->element.Get(), edit->text);
  return SUCCEEDED(attribute) || SUCCEEDED(shown) ? api::Done() : Fail(messages::kSendKeysToElementFailed);
}

}  // namespace quillmate::dom
