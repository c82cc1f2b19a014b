#include "dom/worker_calls.h"

#include <dispex.h>
#include <chrono>
#include <cwchar>
#include <iterator>
#include <utility>

#include "api/messages.h"
#include "com/call_limit.h"
#include "com/encoding.h"
#include "com/owned.h"
#include "com/worker.h"
#include "locate/current_page.h"
#include "session/message_boxes.h"

namespace quillmate {
namespace {

/// The locale of the call: the user's default.
constexpr LCID kLocale = 1024;
constexpr HRESULT kScriptReported = static_cast<HRESULT>(0x80020101);

/// A way to the page's own evaluation: a member of the window, and a script that puts it there.
struct Way {
  const wchar_t* member;
  const wchar_t* preparation;
};

/// Tried in this order until one runs the script. Below document mode 9 the window shows "eval" as soon as
/// the page has run a script. From then on it does so only where a script has assigned it, if at all; a
/// function under a name of our own is visible everywhere, and evaluates in the page's global scope.
constexpr Way kWays[] = {
    {L"eval", nullptr},
    {L"eval", L"window.eval = eval"},
    {L"quillmateEvaluate", L"window.quillmateEvaluate = function (code) { return (0, eval)(code) }"},
};

/// What a failed call tells of the script's error.
class ErrorReport {
 public:
  ErrorReport() = default;
  ErrorReport(const ErrorReport&) = delete;
  ErrorReport& operator=(const ErrorReport&) = delete;
  ~ErrorReport() { Clear(); }

  EXCEPINFO* put() {
    Clear();
    return &info_;
  }

  /// The page's own words where it gives any, else the code.
  std::wstring Text(HRESULT result) const {
    if (SysStringLen(info_.bstrDescription) != 0) return info_.bstrDescription;
    wchar_t code[20] = L"";
    std::swprintf(code, std::size(code), L"0x%08lX",
                  static_cast<unsigned long>(info_.scode != 0 ? info_.scode : result));
    return code;
  }

 private:
  void Clear() {
    for (const BSTR text : {info_.bstrSource, info_.bstrDescription, info_.bstrHelpFile}) SysFreeString(text);
    info_ = {};
  }

  EXCEPINFO info_{};
};

/// Whether a failed call has not run the script, so that another way may. A script's own error, and a call
/// that may have been lost on its way, are final: no script runs twice.
bool MayTryAnotherWay(HRESULT result) {
  return result != DISP_E_EXCEPTION && result != kScriptReported && !com::FailedInTransit(result);
}

HRESULT Prepare(IHTMLWindow2* window, const wchar_t* preparation) {
  com::Variant nothing;
  const HRESULT result =
      window->execScript(com::Bstr(preparation).get(), com::Bstr(L"JScript").get(), nothing.put());
  return SUCCEEDED(result) || com::FailedInTransit(result) ? result : DISP_E_UNKNOWNNAME;
}

HRESULT TryWay(const Way& way, IHTMLWindow2* window, IDispatchEx* members, const com::Variant& code,
               com::Variant& value, ErrorReport& error) {
  HRESULT result = way.preparation != nullptr ? Prepare(window, way.preparation) : S_OK;
  DISPID member = DISPID_UNKNOWN;
  if (SUCCEEDED(result))
    result = members->GetDispID(com::Bstr(way.member).get(), fdexNameCaseSensitive, &member);
  if (FAILED(result)) return result;
  VARIANT argument = code.get();
  DISPPARAMS arguments = {&argument, nullptr, 1, 0};
  return members->Invoke(member, IID_NULL, kLocale, DISPATCH_METHOD, &arguments, value.put(), error.put(),
                         nullptr);
}

/// Never nothing: the script has run, and a host that reads a failure would run it again.
std::string ToText(const com::Variant& value) {
  if (value.type() == VT_EMPTY || value.type() == VT_NULL) return {};
  if (value.type() == VT_BOOL) return value.get().boolVal != VARIANT_FALSE ? "true" : "false";
  const auto text = value.ToText();
  return text ? com::ToAnsi(text->view()) : "[object]";
}

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

std::optional<std::string> EvaluateScript(IHTMLWindow2* window, std::string_view script) {
  const auto members = com::Query<IDispatchEx>(window);
  if (members == nullptr) return std::nullopt;
  const com::Variant code = com::Variant::Text(com::FromAnsi(script));
  com::Variant value;
  ErrorReport error;
  HRESULT result = DISP_E_UNKNOWNNAME;
  for (const Way& way : kWays) {
    result = TryWay(way, window, members.Get(), code, value, error);
    if (SUCCEEDED(result)) return ToText(value);
    if (!MayTryAnotherWay(result)) break;
  }
  OutputDebugStringW((L"Execute script failed: " + error.Text(result) + L"\r\n").c_str());
  return std::nullopt;
}

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
