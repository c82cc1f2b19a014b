#include "dom/worker_calls.h"

#include <chrono>
#include <utility>

#include "api/messages.h"
#include "com/bstr.h"
#include "com/variant.h"
#include "com/worker.h"
#include "dom/script.h"
#include "session/current_page.h"
#include "session/message_boxes.h"

namespace quillmate {
namespace {

constexpr std::chrono::milliseconds kWait(1000);
/// As long as any call to the page may take, and how often a box is looked for meanwhile.
constexpr std::chrono::milliseconds kLongWait(4000);
constexpr std::chrono::milliseconds kBoxLookEvery(250);
com::ComPtr<IDOMEvent> CreateChangeEvent(IHTMLElement* element) {
  com::ComPtr<IDispatch> document;
  if (FAILED(element->get_document(&document))) return {};
  const auto factory = com::Query<IDocumentEvent>(document);
  com::ComPtr<IDOMEvent> event;
  if (factory == nullptr || FAILED(factory->createEvent(com::Bstr(L"HTMLEvents").get(), &event)) ||
      event == nullptr) {
    return {};
  }
  if (FAILED(event->initEvent(com::Bstr(L"change").get(), VARIANT_TRUE, VARIANT_FALSE))) return {};
  return event;
}

bool FireOldEvent(IHTMLElement* element) {
  const auto target = com::Query<IHTMLElement3>(element);
  VARIANT_BOOL cancelled = VARIANT_FALSE;
  com::Variant no_event;
  return target != nullptr &&
         SUCCEEDED(target->fireEvent(com::Bstr(L"onchange").get(), no_event.put(), &cancelled));
}

/// Raises the change event that the page's document mode has. Returns when its handlers do.
/// @return whether the page has had it.
bool RaiseChange(IHTMLElement* element) {
  // Only elements of document modes 9 and up are event targets.
  const auto target = com::Query<IEventTarget>(element);
  const auto event = target != nullptr ? CreateChangeEvent(element) : nullptr;
  VARIANT_BOOL proceed = VARIANT_TRUE;
  return event != nullptr ? SUCCEEDED(target->dispatchEvent(event.Get(), &proceed)) : FireOldEvent(element);
}

/// Calls `OrFailure<T> call(Interface*)` on a worker.
/// @return what the call returned; nothing when it is still running.
template <class T, class Interface, class Call>
OrFailure<std::optional<T>> RunOnUsablePage(Session& session, com::ComPtr<Interface> object, Call call) {
  if (!IsTargetUsable(session)) return Failed(messages::kElementNotFound);
  const auto called = [call = std::move(call)](Interface* crossed) -> OrFailure<T> {
    if (crossed == nullptr) return Failed(messages::kElementNotFound);
    return call(crossed);
  };
  auto returned = com::CallOnWorker(std::move(object), kWait, called);
  if (!returned) return std::nullopt;
  if (!*returned) return std::unexpected(std::move(returned->error()));
  return std::move(**returned);
}

OrFailure<ClickOutcome> ClickCrossed(IHTMLElement* element) {
  if (FAILED(element->click())) return Failed(messages::kClickFailed);
  return ClickOutcome::kReturned;
}

/// Whether a dialog of the page's window keeps its scripts waiting: it disables the window that owns it.
bool IsHeldUpByDialog(HWND window) {
  return window != nullptr && (!IsWindowEnabled(window) || FindMessageBox(window).has_value());
}

}  // namespace

OrFailure<ClickOutcome> ClickElementOnWorker(Session& session, com::ComPtr<IHTMLElement> element) {
  const auto returned = RunOnUsablePage<ClickOutcome>(session, std::move(element), ClickCrossed);
  if (!returned) return std::unexpected(returned.error());
  return returned->value_or(ClickOutcome::kStillRunning);
}

ClickOutcome ClickElementAndWait(Session& session, com::ComPtr<IHTMLElement> element) {
  const WindowHolder* holder = session.ValidHolder();
  HWND window = holder != nullptr ? GetAncestor(holder->GetWindowHandle(), GA_ROOT) : nullptr;
  com::WorkerCallFor call(std::move(element), [](IHTMLElement* clicked) {
    return clicked != nullptr && SUCCEEDED(clicked->click());
  });
  auto clicked = call.WaitFor(kWait);
  for (auto waited = kBoxLookEvery; !clicked && waited < kLongWait; waited += kBoxLookEvery) {
    if (IsHeldUpByDialog(window)) return ClickOutcome::kHeldUp;
    clicked = call.WaitFor(kBoxLookEvery);
  }
  if (!clicked) return ClickOutcome::kStillRunning;
  return *clicked ? ClickOutcome::kReturned : ClickOutcome::kFailed;
}

OrFailure<std::optional<std::string>> RunScriptOnWorker(Session& session, com::ComPtr<IHTMLWindow2> window,
                                                        std::string script) {
  const auto run = [script = std::move(script)](IHTMLWindow2* page) -> OrFailure<std::string> {
    auto value = EvaluateScript(page, script);
    if (!value) return Failed(messages::kExecuteScriptFailed);
    return std::move(*value);
  };
  return RunOnUsablePage<std::string>(session, std::move(window), run);
}

bool RaiseChangeOnWorker(com::ComPtr<IHTMLElement> element) {
  const auto raised = com::CallOnWorker(std::move(element), kWait, [](IHTMLElement* changed) {
    return changed != nullptr && RaiseChange(changed);
  });
  return raised.value_or(true);
}

}  // namespace quillmate
