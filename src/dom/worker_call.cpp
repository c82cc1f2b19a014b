// Click, script and change event on a worker, with one wait for all of them.
#include "dom/worker_call.h"

#include <chrono>
#include <utility>

#include "api/messages.h"
#include "com/worker.h"
#include "dom/change_event.h"
#include "dom/script.h"
#include "locate/frames.h"

namespace quillmate::dom {
namespace {

using namespace api;  // NOLINT(google-build-using-namespace): the result builders read as words
using com::ComPtr;

constexpr std::chrono::seconds kWait(1);

/// What a worker hands back: the call's value, or why it failed, in the ANSI code page.
struct ResultMessage {
  bool success = false;
  std::string text;
};

template <class T, class Call>
Result RunForText(ComPtr<T> object, Call call) {
  if (!locate::IsTargetUsable()) return Fail(messages::kElementNotFound);
  auto message = com::CallOnWorker(std::move(object), kWait, [call = std::move(call)](T* crossed) {
    return crossed != nullptr ? call(crossed) : ResultMessage{false, messages::kElementNotFound};
  });
  // Told as a success, on purpose: the page has had the call and shows a dialog that the host can now answer.
  if (!message) return Number(true, 0);
  return message->success ? Text(std::move(message->text)) : Fail(std::move(message->text));
}

ResultMessage ClickElement(IHTMLElement* element) {
  return FAILED(element->click()) ? ResultMessage{false, messages::kClickFailed} : ResultMessage{true, {}};
}

}  // namespace

Result RunElementClickOnWorker(ComPtr<IHTMLElement> element) {
  return RunForText(std::move(element), ClickElement);
}

Result RunScriptOnWorker(ComPtr<IHTMLWindow2> window, std::string script) {
  return RunForText(std::move(window), [script = std::move(script)](IHTMLWindow2* page) {
    auto value = EvaluateScript(page, script);
    return value ? ResultMessage{true, std::move(*value)}
                 : ResultMessage{false, messages::kExecuteScriptFailed};
  });
}

void RunChangeEventOnWorker(ComPtr<IHTMLElement> element) {
  com::CallOnWorker(std::move(element), kWait, [](IHTMLElement* changed) {
    if (changed != nullptr) RaiseChange(changed);
    return true;
  });
}

}  // namespace quillmate::dom
