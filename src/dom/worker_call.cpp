// The frame that click and script evaluation share, and the two calls in it.
#include "dom/worker_call.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <ctime>
#include <future>
#include <memory>
#include <thread>
#include <utility>
#include <vector>

#include "api/messages.h"
#include "com/apartment.h"
#include "dom/change_event.h"
#include "dom/script.h"
#include "locate/frames.h"

namespace quillmate::dom {
namespace {

using namespace api;  // NOLINT(google-build-using-namespace): the result builders read as words
using com::ComPtr;

constexpr std::chrono::seconds kWait(1);
constexpr std::int32_t kNobodyWaits = 0;

// When the call that a command waits for was begun, in whole seconds; a worker with another token has been
// given up. Two calls of one second share a token, which is harmless: nobody reads the earlier one's promise
// any more.
std::atomic<std::int32_t> call_token = kNobodyWaits;

/// What a worker owns, for as long as its call takes: nothing of the command's stack.
struct Work {
  ComPtr<IStream> stream;
  std::promise<ResultMessage> promise;
  std::int32_t token = kNobodyWaits;
  /// Set when the worker is through: its page answers again, or is gone.
  std::shared_ptr<std::atomic<bool>> ended = std::make_shared<std::atomic<bool>>(false);

  ~Work() { *ended = true; }

  bool IsAwaited() const { return token == call_token; }
};

template <class T>
ComPtr<T> Unmarshal(Work& work) {
  ComPtr<T> object;
  if (work.stream == nullptr) return object;
  // Takes the stream's reference over, whatever the outcome.
  CoGetInterfaceAndReleaseStream(work.stream.Detach(), __uuidof(T),
                                 reinterpret_cast<void**>(object.GetAddressOf()));
  return object;
}

template <class T, class Call>
void RunInOwnApartment(Work& work, const Call& call) {
  const com::Apartment apartment;
  const auto object = Unmarshal<T>(work);
  if (!work.IsAwaited()) return;
  ResultMessage message =
      object != nullptr ? call(object.Get()) : ResultMessage{false, messages::kElementNotFound};
  if (work.IsAwaited()) work.promise.set_value(std::move(message));
}

/// The one place where a worker's exceptions end: the command, if it still waits, hears of it through the
/// promise.
template <class T, class Call>
void RunWorker(std::unique_ptr<Work> work, const Call& call) {
  try {
    RunInOwnApartment<T>(*work, call);
  } catch (...) {
    work->promise.set_exception(std::current_exception());
  }
}

/// Objects of calls that did not come back in time. To release one is a call too, which a page that runs an
/// endless script would never answer, so each waits for its worker's end.
struct Parked {
  ComPtr<IUnknown> object;
  std::shared_ptr<std::atomic<bool>> worker_ended;
};

std::vector<Parked>& ParkedObjects() {
  // Never destroyed: the library is unloaded under the loader lock, where such a release hangs.
  static std::vector<Parked>& parked = *new std::vector<Parked>;
  return parked;
}

void ReleaseParkedObjects() {
  std::erase_if(ParkedObjects(), [](const Parked& parked) { return parked.worker_ended->load(); });
}

/// A worker may outlive the host's use of the library, so from the first one on the library stays loaded.
void KeepLibraryLoaded() {
  HMODULE library = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                     reinterpret_cast<LPCWSTR>(&call_token), &library);
}

/// Runs a call on an object on a thread and in an apartment of its own, and waits for it for one second.
template <class T, class Call>
Result RunOnWorker(ComPtr<T> object, Call call) {
  ReleaseParkedObjects();
  if (!locate::IsTargetUsable()) return Fail(messages::kElementNotFound);
  auto work = std::make_unique<Work>();
  // Without a stream the worker has no object, and answers so.
  CoMarshalInterThreadInterfaceInStream(__uuidof(T), object.Get(), &work->stream);
  work->token = static_cast<std::int32_t>(std::time(nullptr));
  call_token = work->token;
  auto answer = work->promise.get_future();
  const auto ended = work->ended;
  KeepLibraryLoaded();
  std::thread(RunWorker<T, Call>, std::move(work), std::move(call)).detach();

  if (answer.wait_for(kWait) != std::future_status::ready) {
    call_token = kNobodyWaits;
    ParkedObjects().push_back({std::move(object), ended});
    // Told as a success, on purpose: the page has had the call and shows a dialog that the host can now
    // answer.
    return Number(true, 0);
  }
  ResultMessage message = answer.get();
  return message.success ? Text(std::move(message.text)) : Fail(std::move(message.text));
}

ResultMessage ClickElement(IHTMLElement* element) {
  return FAILED(element->click()) ? ResultMessage{false, messages::kClickFailed} : ResultMessage{true, {}};
}

}  // namespace

Result RunElementClickOnWorker(ComPtr<IHTMLElement> element) {
  return RunOnWorker(std::move(element), ClickElement);
}

Result RunScriptOnWorker(ComPtr<IHTMLWindow2> window, std::string script) {
  return RunOnWorker(std::move(window), [script = std::move(script)](IHTMLWindow2* page) {
    auto value = EvaluateScript(page, script);
    return value ? ResultMessage{true, std::move(*value)}
                 : ResultMessage{false, messages::kExecuteScriptFailed};
  });
}

void RunChangeEventOnWorker(ComPtr<IHTMLElement> element) {
  RunOnWorker(std::move(element), [](IHTMLElement* changed) {
    RaiseChange(changed);
    return ResultMessage{true, {}};
  });
}

}  // namespace quillmate::dom
