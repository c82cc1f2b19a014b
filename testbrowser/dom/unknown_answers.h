// The questions about MSHTML's objects to which nobody knows the answer, each with the answers that are
// possible. The first is the default. Another is chosen by the option "--answer NAME=ANSWER", or while the
// browser runs by the registered window message "testbrowser answer", sent to any "Internet Explorer_Server"
// window.
#pragma once

#include <windows.h>
#include <optional>
#include <string_view>

#include "engine/json.h"

namespace testbrowser::dom {

/// @param choice "NAME=ANSWER".
/// @return false when there is no such question or answer.
bool ChooseAnswer(std::string_view choice);

/// What was chosen and is no default, for the in-page agent: {"NAME": "ANSWER", …}.
engine::JsonPtr ChosenAnswers();

/// @param wparam of the steering message: a global atom with the choice. It is answered by 1 when the choice
/// is known.
/// @return the answer when the message is the steering message.
std::optional<LRESULT> OnAnswerMessage(UINT message, WPARAM wparam);

}  // namespace testbrowser::dom
