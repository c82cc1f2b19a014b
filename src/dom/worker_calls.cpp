#include "dom/worker_calls.h"

#include <dispex.h>
#include <chrono>
#include <string_view>
#include <utility>

#include "api/messages.h"
#include "com/bstr.h"
#include "com/encoding.h"
#include "com/variant.h"
#include "com/worker.h"
#include "session/current_page.h"

namespace quillmate {
namespace {

constexpr std::chrono::seconds kWait(1);
/// The locale of the call: the system's default, as 1024 says.
constexpr LCID kLocale = 1024;

std::optional<DISPID> FindEval(IDispatchEx* window) {
  DISPID id = DISPID_UNKNOWN;
  if (FAILED(window->GetDispID(com::Bstr(L"eval").get(), fdexNameCaseSensitive, &id))) return std::nullopt;
  return id;
}

/// A page of document mode 9 or later, and one that has run no script yet, shows no "eval" from outside until
/// a script has put it there.
void ProvideEval(IHTMLWindow2* window) {
  com::Variant nothing;
  window->execScript(com::Bstr(L"window.eval = eval").get(), com::Bstr(L"JScript").get(), nothing.put());
}

std::optional<std::string> ToText(const com::Variant& value) {
  if (value.type() == VT_EMPTY || value.type() == VT_NULL) return std::string();
  if (value.type() == VT_BOOL) return value.get().boolVal != VARIANT_FALSE ? "true" : "false";
  const auto text = value.ToText();
  if (!text) return std::nullopt;
  return com::ToAnsi(text->view());
}

/// Blocks while the script runs.
std::optional<std::string> EvaluateScript(IHTMLWindow2* window, std::string_view script) {
  const auto dispatch = com::Query<IDispatchEx>(window);
  if (dispatch == nullptr) return std::nullopt;
  auto eval = FindEval(dispatch.Get());
  if (!eval) {
    ProvideEval(window);
    eval = FindEval(dispatch.Get());
  }
  if (!eval) return std::nullopt;
  const com::Variant code = com::Variant::Text(com::FromAnsi(script));
  VARIANT argument = code.get();
  DISPPARAMS arguments = {&argument, nullptr, 1, 0};
  com::Variant value;
  if (FAILED(dispatch->Invoke(*eval, IID_NULL, kLocale, DISPATCH_METHOD, &arguments, value.put(), nullptr,
                              nullptr))) {
    return std::nullopt;
  }
  return ToText(value);
}

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

void FireOldEvent(IHTMLElement* element) {
  const auto target = com::Query<IHTMLElement3>(element);
  VARIANT_BOOL cancelled = VARIANT_FALSE;
  com::Variant no_event;
  if (target != nullptr) target->fireEvent(com::Bstr(L"onchange").get(), no_event.put(), &cancelled);
}

/// Raises the change event that the page's document mode has. Returns when its handlers do.
void RaiseChange(IHTMLElement* element) {
  // Only elements of document modes 9 and up are event targets.
  const auto target = com::Query<IEventTarget>(element);
  const auto event = target != nullptr ? CreateChangeEvent(element) : nullptr;
  if (event == nullptr) return FireOldEvent(element);
  VARIANT_BOOL proceed = VARIANT_TRUE;
  target->dispatchEvent(event.Get(), &proceed);
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

}  // namespace

OrFailure<ClickOutcome> ClickElementOnWorker(Session& session, com::ComPtr<IHTMLElement> element) {
  const auto click = [](IHTMLElement* clicked) -> OrFailure<ClickOutcome> {
    if (FAILED(clicked->click())) return Failed(messages::kClickFailed);
    return ClickOutcome::kReturned;
  };
  const auto returned = RunOnUsablePage<ClickOutcome>(session, std::move(element), click);
  if (!returned) return std::unexpected(returned.error());
  return returned->value_or(ClickOutcome::kStillRunning);
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

void RaiseChangeOnWorker(com::ComPtr<IHTMLElement> element) {
  com::CallOnWorker(std::move(element), kWait, [](IHTMLElement* changed) {
    if (changed != nullptr) RaiseChange(changed);
    return true;
  });
}

}  // namespace quillmate
