// Keys sent to one element: the road that the key command shares with the commands that empty a field.
#pragma once

#include <windows.h>
#include <mshtml.h>
#include <initializer_list>
#include <optional>
#include <string_view>

#include "api/result.h"

namespace quillmate::input {

/// Brings the element's page to the top, gives the element the focus and presses the key sequences one after
/// another.
/// @param element may be null, which is an element that was not found.
/// @return nothing on success; else "Element not found!", "Switch tab failed!" or "Send keys failed!": the
/// page has not let the focus go after three seconds (nothing is pressed), or a key name is unknown (the
/// sequences after it are not sent, the keys pressed before it stay down).
std::optional<api::Failure> SendKeysToElement(IHTMLElement2* element,
                                              std::initializer_list<std::string_view> sequences);

}  // namespace quillmate::input
