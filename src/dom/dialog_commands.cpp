// The commands that answer an open message box. Despite the "next" in their names none of them arms anything:
// each looks for a box that is open now.
#include <string>

#include "api/messages.h"
#include "api/validation.h"
#include "dom/commands.h"
#include "dom/message_boxes.h"

namespace quillmate::dom {
namespace {

using api::CommandParams;
using api::Result;
namespace messages = api::messages;

Result Outcome(bool pressed, const char* failure) { return pressed ? api::Done() : api::Fail(failure); }

}  // namespace

Result AssertAlert(const CommandParams&) { return Outcome(AcceptMessageBox(), messages::kAssertalertFailed); }

Result ChooseOkOnNextConfirmation(const CommandParams&) {
  return Outcome(AcceptMessageBox(), messages::kChooseOkOnNextConfirmationFailed);
}

Result ChooseCancelOnNextConfirmation(const CommandParams&) {
  return Outcome(CancelMessageBox(), messages::kChooseCancelOnNextConfirmationFailed);
}

Result AnswerOnNextPrompt(const CommandParams& params) {
  const std::string text = params.Get("value");
  if (!api::IsTextValue(text)) return api::Fail(messages::kInvalidParameter);
  return Outcome(AcceptMessageBox(&text), messages::kAnswerOnNextPromptFailed);
}

Result ChooseCancelOnNextPrompt(const CommandParams&) {
  return Outcome(CancelMessageBox(), messages::kChooseCancelOnNextPromptFailed);
}

Result ClickOnAlertDialog(const CommandParams& params) {
  const std::string text = params.Get("input-value");
  const std::string accept = params.Get("accept");
  const bool pressed = accept == "True" ? AcceptMessageBox(&text) : accept == "False" && CancelMessageBox();
  return Outcome(pressed, messages::kClickOnAlertDialogFailed);
}

}  // namespace quillmate::dom
