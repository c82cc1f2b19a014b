// The commands that press a button of an open message box. Despite the "next" in their names none of them arms
// anything: each looks for a box that is open now.
#include <string>

#include "api/messages.h"
#include "commands.h"
#include "session/message_boxes.h"

namespace quillmate {
namespace {

Result Outcome(bool pressed, const char* failure) { return pressed ? Done() : Fail(failure); }

}  // namespace

Result AssertAlert(Session&, const CommandParams&) {
  return Outcome(AcceptMessageBox(), messages::kAssertalertFailed);
}

Result ChooseOkOnNextConfirmation(Session&, const CommandParams&) {
  return Outcome(AcceptMessageBox(), messages::kChooseOkOnNextConfirmationFailed);
}

Result ChooseCancelOnNextConfirmation(Session&, const CommandParams&) {
  return Outcome(CancelMessageBox(), messages::kChooseCancelOnNextConfirmationFailed);
}

Result AnswerOnNextPrompt(Session&, const CommandParams& params) {
  const auto text = TextValue(params);
  if (!text) return text.error();
  return Outcome(AcceptMessageBox(&*text), messages::kAnswerOnNextPromptFailed);
}

Result ChooseCancelOnNextPrompt(Session&, const CommandParams&) {
  return Outcome(CancelMessageBox(), messages::kChooseCancelOnNextPromptFailed);
}

Result ClickOnAlertDialog(Session&, const CommandParams& params) {
  const std::string text = params.Get("input-value");
  const std::string accept = params.Get("accept");
  const bool pressed = accept == "True" ? AcceptMessageBox(&text) : accept == "False" && CancelMessageBox();
  return Outcome(pressed, messages::kClickOnAlertDialogFailed);
}

}  // namespace quillmate
