// What a form control holds: its own value, which in newer document modes is not its "value" attribute.
#pragma once

#include <windows.h>
#include <mshtml.h>
#include <optional>
#include <string_view>

#include "com/owned.h"

namespace quillmate {

/// The kinds of element that differ in how their value is read and written.
enum class ControlKind { kInput, kTextArea, kSelect, kButton, kEditableRegion, kOther };

/// @return the kind of the elements of a tag name, in capitals as the engine gives it; kOther also for
/// editable regions, which no tag name tells.
ControlKind ControlKindOf(std::wstring_view tag);

/// @return the element's kind; nothing when the page refuses a call.
std::optional<ControlKind> ReadControlKind(IHTMLElement* element);

/// @return the control's current value; an editable region's text; of another element the "value" attribute,
/// empty when it has none. Nothing when a call failed.
std::optional<com::Bstr> ReadValue(IHTMLElement* element, ControlKind kind);

/// Writes an input's or text area's own value, or an editable region's text.
/// @return the call's outcome; S_OK for any other element, which is left alone.
HRESULT WriteOwnValue(IHTMLElement* element, ControlKind kind, const com::Bstr& text);

/// Writes the "value" attribute.
HRESULT WriteValueAttribute(IHTMLElement* element, const com::Bstr& text);

}  // namespace quillmate
