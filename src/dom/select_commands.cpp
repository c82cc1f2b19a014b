// The commands that choose an option of a drop-down list, or take the choice back.
#include <charconv>
#include <limits>
#include <string>

#include "api/messages.h"
#include "com/encoding.h"
#include "com/variant.h"
#include "commands.h"
#include "dom/worker_calls.h"
#include "locate/element_search.h"
#include "session/current_page.h"

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
OrFailure<com::ComPtr<IHTMLSelectElement>> FindList(com::ComPtr<IHTMLElement> element) {
  com::Bstr tag;
  if (FAILED(element->get_tagName(tag.put()))) return Failed(messages::kGetTagNameFailed);
  if (tag.view() != L"SELECT" && tag.view() != L"OPTION") return Failed(messages::kNotDropdownMenuElement);
  while (element != nullptr) {
    if (auto list = com::Query<IHTMLSelectElement>(element)) return list;
    com::ComPtr<IHTMLElement> parent;
    element->get_parentElement(&parent);
    element = std::move(parent);
  }
  return Failed(messages::kNotDropdownMenuElement);
}

Option OptionAt(IHTMLSelectElement* list, LONG index) {
  com::ComPtr<IDispatch> item;
  const com::Variant position = com::Variant::Int(index);
  if (FAILED(list->item(position.get(), position.get(), &item))) return {};
  return com::Query<IHTMLOptionElement>(item);
}

bool Matches(IHTMLOptionElement* option, const OptionSelector& selector) {
  com::Bstr text;
  const bool by_value = selector.key == OptionSelector::Key::kValue;
  const HRESULT read = by_value ? option->get_value(text.put()) : option->get_text(text.put());
  return SUCCEEDED(read) && com::ToAnsi(text.view()) == selector.text;
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
    if (option == nullptr) return Failed(unreadable);
    if (by_index || Matches(option.Get(), selector)) return option;
  }
  return Failed(messages::kTargetOptionNotFound);
}

bool IsSelected(IHTMLOptionElement* option) {
  VARIANT_BOOL selected = VARIANT_FALSE;
  return SUCCEEDED(option->get_selected(&selected)) && selected != VARIANT_FALSE;
}

/// Sets an option's selection. The page hears of it only when the selection really changes: a drop-down may
/// refuse to be without one.
/// @param failure the message when the page refuses the call.
Result ChangeSelection(IHTMLSelectElement* list, IHTMLOptionElement* option, bool selected,
                       const char* failure) {
  if (IsSelected(option) == selected) return Done();
  if (FAILED(option->put_selected(selected ? VARIANT_TRUE : VARIANT_FALSE))) return Fail(failure);
  if (IsSelected(option) == selected) RaiseChangeOnWorker(com::Query<IHTMLElement>(list));
  return Done();
}

/// The steps that both commands share once the element is there.
Result ChangeOption(const com::ComPtr<IHTMLElement>& element, std::string_view selector, bool selected,
                    const char* failure) {
  const auto list = FindList(element);
  if (!list) return list.error();
  const auto option = FindOption(list->Get(), ParseOptionSelector(selector), failure);
  if (!option) return option.error();
  return ChangeSelection(list->Get(), option->Get(), selected, failure);
}

}  // namespace

Result Select(Session& session, const CommandParams& params) {
  const auto target = Locator(params);
  if (!target) return target.error();
  const std::string selector = params.Get("value");
  if (!IsOptionSelector(selector)) return Fail(messages::kInvalidOption);
  if (GetFrameDocument(session) == nullptr) return Fail(messages::kFrameNotFound);
  const auto element = FindElement(session, *target);
  if (!element) return element.error();
  return ChangeOption(*element, selector, true, messages::kGetOptionFailed);
}

Result Deselect(Session& session, const CommandParams& params) {
  const auto target = Locator(params);
  if (!target) return target.error();
  // The element comes before the check of "value" here, unlike in Select.
  if (GetFrameDocument(session) == nullptr) return Fail(messages::kFrameNotFound);
  const auto element = FindElement(session, *target);
  if (!element) return element.error();
  const std::string selector = params.Get("value");
  if (!IsOptionSelector(selector)) return Fail(messages::kInvalidOption);
  return ChangeOption(*element, selector, false, messages::kDeselectFailed);
}

}  // namespace quillmate
