#include "com/worker.h"

#include <atomic>
#include <cstdint>
#include <ctime>
#include <future>
#include <thread>

#include "com/apartment.h"
#include "com/library_lifetime.h"
#include "com/thread_objects.h"

namespace quillmate::com {
namespace {

constexpr std::int32_t kNobodyWaits = 0;

// Start time, in seconds, of the call being waited for. A worker whose token differs has been abandoned. Two
// calls of one second share a token, which is harmless: nobody reads the earlier one's promise any more.
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

  ~Work() {
    // A stream that nobody took over still holds its object.
    if (stream != nullptr) CoReleaseMarshalData(stream.Get());
    *ended = true;
  }

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

/// The one place where a worker's exceptions end. A command that still waits gets them through the promise.
void RunWorker(std::unique_ptr<Work> work) {
  try {
    RunInOwnApartment(*work);
  } catch (...) {
    work->promise.set_exception(std::current_exception());
  }
}

}  // namespace

bool RunOnWorker(ComPtr<IUnknown> object, REFIID iid, std::function<void(IUnknown*)> call,
                 std::chrono::milliseconds wait) {
  auto work = std::make_unique<Work>();
  // Without a stream the worker has no object, and answers so.
  if (object != nullptr) CoMarshalInterThreadInterfaceInStream(iid, object.Get(), &work->stream);
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
    if (object != nullptr) ParkThreadObject(std::move(object), ended);
    return false;
  }
  answer.get();
  return true;
}

}  // namespace quillmate::com
