// The commands that choose an option of a drop-down list, or take the choice back.
#include <charconv>
#include <limits>
#include <optional>
#include <string>
#include <utility>

#include "api/messages.h"
#include "com/encoding.h"
#include "com/owned.h"
#include "commands.h"
#include "dom/worker_calls.h"
#include "locate/current_page.h"

namespace quillmate {
namespace {

using Option = com::ComPtr<IHTMLOptionElement>;

/// What an option selector ("index=", "value=", "label=") asks of an option.
struct OptionSelector {
  enum class Key { kIndex, kValue, kLabel };
  Key key;
  /// Counts from 0; a number that no list reaches when the written one is out of range.
  LONG index = std::numeric_limits<LONG>::max();
  std::string text;
};

/// @param selector a text that passed the option check.
OptionSelector ParseOptionSelector(std::string_view selector) {
  const std::string_view value = selector.substr(selector.find('=') + 1);
  if (selector.starts_with("value=")) return {OptionSelector::Key::kValue, 0, std::string(value)};
  if (selector.starts_with("label=")) return {OptionSelector::Key::kLabel, 0, std::string(value)};
  OptionSelector by_index{OptionSelector::Key::kIndex, std::numeric_limits<LONG>::max(), {}};
  std::from_chars(value.data(), value.data() + value.size(), by_index.index);
  return by_index;
}

/// The list that a target stands for: itself, or the list around an option.
/// @param unreadable the message when the page refuses a call.
OrFailure<com::ComPtr<IHTMLSelectElement>> FindList(com::ComPtr<IHTMLElement> element,
                                                    const char* unreadable) {
  com::Bstr tag;
  if (FAILED(element->get_tagName(tag.put()))) return Failed(messages::kGetTagNameFailed);
  if (tag.view() != L"SELECT" && tag.view() != L"OPTION") return Failed(messages::kNotDropdownMenuElement);
  while (tag.view() != L"SELECT") {
    com::ComPtr<IHTMLElement> parent;
    if (FAILED(element->get_parentElement(&parent))) return Failed(unreadable);
    if (parent == nullptr) return Failed(messages::kNotDropdownMenuElement);
    element = std::move(parent);
    if (FAILED(element->get_tagName(tag.put()))) return Failed(unreadable);
  }
  auto list = com::Query<IHTMLSelectElement>(element);
  if (list == nullptr) return Failed(unreadable);
  return list;
}

Option OptionAt(IHTMLSelectElement* list, LONG index) {
  com::ComPtr<IDispatch> item;
  const com::Variant position = com::Variant::Int(index);
  if (FAILED(list->item(position.get(), position.get(), &item))) return {};
  return com::Query<IHTMLOptionElement>(item);
}

/// @return nothing when the option cannot be read.
std::optional<bool> Matches(IHTMLOptionElement* option, const OptionSelector& selector) {
  com::Bstr text;
  const bool by_value = selector.key == OptionSelector::Key::kValue;
  const HRESULT read = by_value ? option->get_value(text.put()) : option->get_text(text.put());
  if (FAILED(read)) return std::nullopt;
  return com::ToAnsi(text.view()) == selector.text;
}

/// @param unreadable the message when the list cannot be read.
OrFailure<Option> FindOption(IHTMLSelectElement* list, const OptionSelector& selector,
                             const char* unreadable) {
  LONG count = 0;
  if (FAILED(list->get_length(&count))) return Failed(unreadable);
  // A position needs no look at the options before it.
  const bool by_index = selector.key == OptionSelector::Key::kIndex;
  for (LONG i = by_index ? selector.index : 0; i < count; ++i) {
    auto option = OptionAt(list, i);
    const auto matches = option == nullptr || by_index ? true : Matches(option.Get(), selector);
    if (option == nullptr || !matches) return Failed(unreadable);
    if (*matches) return option;
  }
  return Failed(messages::kTargetOptionNotFound);
}

/// @return nothing when the page refuses the call.
std::optional<bool> IsSelected(IHTMLOptionElement* option) {
  VARIANT_BOOL selected = VARIANT_FALSE;
  if (FAILED(option->get_selected(&selected))) return std::nullopt;
  return selected != VARIANT_FALSE;
}

/// Sets an option's selection.
/// @return whether the selection changed, as far as is known: a drop-down may refuse to be without one.
/// Nothing when the page refuses a call before that.
std::optional<bool> SetSelected(IHTMLOptionElement* option, bool selected) {
  const auto before = IsSelected(option);
  if (!before) return std::nullopt;
  if (*before == selected) return false;
  if (FAILED(option->put_selected(selected ? VARIANT_TRUE : VARIANT_FALSE))) return std::nullopt;
  return IsSelected(option).value_or(selected) == selected;
}

/// The steps that both commands share once the element is there. The page hears of a real change only.
/// @param failure the message when the page refuses a call.
Result ChangeOption(com::ComPtr<IHTMLElement> element, std::string_view selector, bool selected,
                    const char* failure) {
  auto list = FindList(std::move(element), failure);
  if (!list) return list.error();
  auto option = FindOption(list->Get(), ParseOptionSelector(selector), failure);
  if (!option) return option.error();
  const auto changed = SetSelected(option->Get(), selected);
  if (!changed) return Fail(failure);
  if (!*changed) return Done();
  auto target = com::Query<IHTMLElement>(*list);
  // Released while the page still responds: its change handlers may never return.
  option->Reset();
  list->Reset();
  return RaiseChangeOnWorker(std::move(target)) ? Done() : Fail(failure);
}

}  // namespace

Result Select(Session& session, const CommandParams& params) {
  const auto target = Locator(params);
  if (!target) return target.error();
  const std::string selector = params.Get("value");
  if (!IsOptionSelector(selector)) return Fail(messages::kInvalidOption);
  if (GetFrameDocument(session) == nullptr) return Fail(messages::kFrameNotFound);
  auto element = FindElement(session, *target);
  if (!element) return element.error();
  return ChangeOption(std::move(*element), selector, true, messages::kGetOptionFailed);
}

Result Deselect(Session& session, const CommandParams& params) {
  const auto target = Locator(params);
  if (!target) return target.error();
  // The element comes before the check of "value" here, unlike in Select.
  if (GetFrameDocument(session) == nullptr) return Fail(messages::kFrameNotFound);
  auto element = FindElement(session, *target);
  if (!element) return element.error();
  const std::string selector = params.Get("value");
  if (!IsOptionSelector(selector)) return Fail(messages::kInvalidOption);
  return ChangeOption(std::move(*element), selector, false, messages::kDeselectFailed);
}

}  // namespace quillmate
