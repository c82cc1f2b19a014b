// The commands that fill and empty edit fields.
#include <functional>
#include <string>
#include <utility>

#include "api/messages.h"
#include "com/encoding.h"
#include "com/process.h"
#include "commands.h"
#include "dom/control_value.h"
#include "dom/element_keys.h"
#include "locate/current_page.h"

namespace quillmate {
namespace {

/// How long a page gets to follow the keys, or to settle, before a field is written.
constexpr std::chrono::milliseconds kSettleTime(500);

struct Edit {
  com::ComPtr<IHTMLElement> element;
  com::Bstr text;
};

/// Reads "target" and "value", checks both, and only then looks for the element.
/// @param absent the message for an absent element; null for the search's own.
OrFailure<Edit> ReadEdit(Session& session, const CommandParams& params, const char* absent = nullptr) {
  const auto target = Locator(params);
  if (!target) return std::unexpected(target.error());
  const auto value = TextValue(params);
  if (!value) return std::unexpected(value.error());
  auto element = FindElement(session, *target);
  if (!element) return Failed(absent != nullptr ? std::string(absent) : element.error().message);
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

/// Writes the attribute and what an element shows; one of both is enough.
bool WriteEither(IHTMLElement* element, const com::Bstr& text, const std::function<HRESULT()>& write_shown) {
  const bool is_attribute_written = SUCCEEDED(WriteValueAttribute(element, text));
  return SUCCEEDED(write_shown()) || is_attribute_written;
}

/// Only the user can choose a file: the page ignores the text without an error.
bool SendToInput(IHTMLElement* element, const com::Bstr& text) {
  const auto input = com::Query<IHTMLInputElement>(element);
  com::Bstr type;
  if (input == nullptr || FAILED(input->get_type(type.put())) || type.view() == L"file") return false;
  return WriteEither(element, text, [&] { return input->put_value(text.get()); });
}

/// A text that no option has as its value would leave the list without a choice, so the old one is put back.
bool SendToList(IHTMLElement* element, const com::Bstr& text) {
  const auto list = com::Query<IHTMLSelectElement>(element);
  LONG chosen = -1;
  com::Bstr value;
  if (list == nullptr || FAILED(list->get_selectedIndex(&chosen)) || FAILED(list->put_value(text.get())) ||
      FAILED(list->get_value(value.put()))) {
    return false;
  }
  if (value.view() == text.view()) return true;
  list->put_selectedIndex(chosen);
  return false;
}

bool SendText(IHTMLElement* element, const com::Bstr& text) {
  const auto kind = ReadControlKind(element);
  if (!kind) return false;
  if (kind == ControlKind::kInput) return SendToInput(element, text);
  if (kind == ControlKind::kSelect) return SendToList(element, text);
  const bool shows_text = kind == ControlKind::kTextArea || kind == ControlKind::kEditableRegion;
  return WriteEither(element, text,
                     [&] { return shows_text ? WriteOwnValue(element, *kind, text) : E_FAIL; });
}

/// Empties the value attribute and what the element shows of it.
/// @return the outcome of the last call.
HRESULT EmptyByValue(IHTMLElement* element) {
  const com::Bstr nothing;
  const auto kind = ReadControlKind(element);
  const HRESULT attribute = WriteValueAttribute(element, nothing);
  if (!kind) return E_FAIL;
  if (kind == ControlKind::kInput) return WriteOwnValue(element, *kind, nothing);
  if (kind == ControlKind::kTextArea) return element->put_innerText(nothing.get());
  return attribute;
}

}  // namespace

Result TypeText(Session& session, const CommandParams& params) {
  const auto edit = ReadEdit(session, params, messages::kElementNotFound);
  if (!edit) return edit.error();
  IHTMLElement* element = edit->element.Get();
  if (const auto emptied = EmptyByKeys(session, element); !emptied) return emptied.error();
  com::Pause(kSettleTime);
  if (FAILED(WriteValueAttribute(element, edit->text))) return Fail(messages::kSetAttributeFailed);
  const auto kind = ReadControlKind(element);
  const bool is_shown = kind && SUCCEEDED(WriteOwnValue(element, *kind, edit->text));
  return is_shown ? Done() : Fail(messages::kSetAttributeFailed);
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
  const auto target = Locator(params);
  if (!target) return target.error();
  const auto element = FindElement(session, *target);
  if (!element) return Fail(messages::kElementNotFound);
  const HRESULT last = EmptyByValue(element->Get());
  // Deliberate: whether the keys arrive does not matter. They empty what the calls could not, such as a text
  // that the user typed into a text area.
  static_cast<void>(EmptyByKeys(session, element->Get()));
  return last == S_OK ? Done() : Fail(messages::kFailedToClearTheEditBox);
}

Result SendKeysToElement(Session& session, const CommandParams& params) {
  const auto edit = ReadEdit(session, params);
  if (!edit) return edit.error();
  return SendText(edit->element.Get(), edit->text) ? Done() : Fail(messages::kSendKeysToElementFailed);
}

}  // namespace quillmate
