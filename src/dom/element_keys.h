#pragma once

#include <windows.h>
#include <mshtml.h>
#include <initializer_list>
#include <string_view>

#include "api/result.h"
#include "session/session.h"

namespace quillmate {

/// Sends key sequences to one element: brings its page to the top, gives it the focus and presses the
/// sequences one after another. Shared by sendkeys and the commands that clear a field.
/// @param element may be null, which is an element that was not found.
/// @return "Element not found!", "Switch tab failed!", or "Send keys failed!": the focus call has not
/// returned after three seconds (nothing is pressed), or a key name is unknown (the sequences after it are
/// not sent, the keys pressed before it stay down).
OrFailure<void> PressKeysOnElement(Session& session, IHTMLElement* element,
                                   std::initializer_list<std::string_view> sequences);

}  // namespace quillmate
