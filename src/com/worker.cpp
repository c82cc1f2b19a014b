// The worker thread, the promise through which it answers, and the objects of calls that were given up.
#include "com/worker.h"

#include <atomic>
#include <cstdint>
#include <ctime>
#include <future>
#include <thread>
#include <vector>

#include "com/apartment.h"
#include "com/no_destructor.h"

namespace quillmate::com {
namespace {

constexpr std::int32_t kNobodyWaits = 0;

// When the call that a command waits for was begun, in whole seconds; a worker with another token has been
// given up. Two calls of one second share a token, which is harmless: nobody reads the earlier one's promise
// any more.
std::atomic<std::int32_t> call_token = kNobodyWaits;

/// What a worker owns, for as long as its call takes: nothing of the command's stack.
struct Work {
  ComPtr<IStream> stream;
  IID iid{};
  std::function<void(IUnknown*)> call;
  std::promise<void> promise;
  std::int32_t token = kNobodyWaits;
  /// Set when the worker is through: its page answers again, or is gone.
  std::shared_ptr<std::atomic<bool>> ended = std::make_shared<std::atomic<bool>>(false);

  ~Work() { *ended = true; }

  bool IsAwaited() const { return token == call_token; }
};

ComPtr<IUnknown> Unmarshal(Work& work) {
  ComPtr<IUnknown> object;
  if (work.stream == nullptr) return object;
  // Takes the stream's reference over, whatever the outcome.
  CoGetInterfaceAndReleaseStream(work.stream.Detach(), work.iid,
                                 reinterpret_cast<void**>(object.GetAddressOf()));
  return object;
}

void RunInOwnApartment(Work& work) {
  const Apartment apartment;
  const auto object = Unmarshal(work);
  if (!work.IsAwaited()) return;
  work.call(object.Get());
  if (work.IsAwaited()) work.promise.set_value();
}

/// The one place where a worker's exceptions end: the command, if it still waits, hears of it through the
/// promise.
void RunWorker(std::unique_ptr<Work> work) {
  try {
    RunInOwnApartment(*work);
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
  static NoDestructor<std::vector<Parked>> parked;
  return *parked;
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

}  // namespace

bool RunOnWorker(ComPtr<IUnknown> object, REFIID iid, std::function<void(IUnknown*)> call,
                 std::chrono::milliseconds wait) {
  ReleaseParkedObjects();
  auto work = std::make_unique<Work>();
  // Without a stream the worker has no object, and answers so.
  CoMarshalInterThreadInterfaceInStream(iid, object.Get(), &work->stream);
  work->iid = iid;
  work->call = std::move(call);
  work->token = static_cast<std::int32_t>(std::time(nullptr));
  call_token = work->token;
  auto answer = work->promise.get_future();
  const auto ended = work->ended;
  KeepLibraryLoaded();
  std::thread(RunWorker, std::move(work)).detach();

  if (answer.wait_for(wait) != std::future_status::ready) {
    call_token = kNobodyWaits;
    ParkedObjects().push_back({std::move(object), ended});
    return false;
  }
  answer.get();
  return true;
}

}  // namespace quillmate::com
