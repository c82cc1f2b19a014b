#include "engine/script_boxes.h"

#include "engine/page.h"
#include "engine/shims.h"

namespace testbrowser::engine {
namespace {

ScriptBox::Kind KindOf(const std::string& name) {
  if (name == "confirm") return ScriptBox::Kind::kConfirm;
  return name == "prompt" ? ScriptBox::Kind::kPrompt : ScriptBox::Kind::kAlert;
}

}  // namespace

void ScriptBoxes::OnPaused(const cJSON* params) {
  const cJSON* top = cJSON_GetArrayItem(Member(params, "callFrames"), 0);
  if (waiting_ != nullptr || MemberText(top, "functionName") != shims::kAskFunction) {
    session_.Send("Debugger.resume");
    return;
  }
  waiting_ = std::make_shared<Waiting>(MemberText(top, "callFrameId"), *session_.connection);
  session_.Send("Debugger.evaluateOnCallFrame",
                JsonObject()
                    .Add("callFrameId", waiting_->call_frame)
                    .Add("expression", "request")
                    .Add("returnByValue", true)
                    .Take(),
                [this, still = std::weak_ptr(waiting_)](const Reply& reply) {
                  if (still.expired()) return;
                  if (reply) return Show(Member(Member(reply->get(), "result"), "value"));
                  Resume(JsonNull());
                });
}

template <class Answer>
std::function<void(Answer)> ScriptBoxes::WhileWaiting(std::function<void(Answer)> action) {
  return [still = std::weak_ptr(waiting_), action = std::move(action)](Answer answer) {
    if (!still.expired()) action(std::move(answer));
  };
}

void ScriptBoxes::Show(const cJSON* request) {
  const std::string kind = MemberText(request, "kind");
  if (kind == "dialog") {
    const auto still = std::weak_ptr(waiting_);
    auto finished = WhileWaiting<JsonPtr>([this](JsonPtr value) {
      JsonObject answer;
      if (value != nullptr) answer.Add("value", std::move(value));
      Resume(answer.Take());
    });
    const auto dialog = actions_.open_dialog(request, std::move(finished));
    if (const auto waiting = still.lock()) waiting->dialog = dialog;
    return;
  }
  const ScriptBox box{KindOf(kind), MemberText(request, "text"), MemberText(request, "value")};
  actions_.show_box(box, WhileWaiting<BoxAnswer>([this](const BoxAnswer& answer) {
                      Resume(JsonObject().Add("accepted", answer.accepted).Add("text", answer.text).Take());
                    }));
}

void ScriptBoxes::Resume(JsonPtr answer) {
  const auto waiting = std::exchange(waiting_, nullptr);
  JsonPtr assignment = JsonObject()
                           .Add("callFrameId", waiting->call_frame)
                           .Add("expression", "answer = " + PrintJson(answer.get()))
                           .Take();
  // Sent on only when the answer is in its place.
  session_.Send("Debugger.evaluateOnCallFrame", std::move(assignment),
                [session = session_](const Reply&) { session.Send("Debugger.resume"); });
}

void ScriptBoxes::Drop() {
  const auto waiting = std::exchange(waiting_, nullptr);
  if (waiting == nullptr) return;
  if (waiting->dialog != nullptr) {
    waiting->dialog->Close();
  } else {
    actions_.take_box_down();
  }
}

}  // namespace testbrowser::engine
