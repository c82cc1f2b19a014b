// The worker thread and the promise through which it hands back what happened.
//
// No command keeps an object of a page that its call may block. Releasing a proxy is itself a call to the
// page, and one that runs an endless script or shows a dialog would hold the command up behind its back. So
// the caller's reference moves into the marshalling stream and is released before the worker starts, while
// the page still responds; from then on the worker owns the only one, and releases it in its own apartment
// when the call has returned, however late that is. Nothing has to be set aside for a page that does not
// respond, and nothing has to be released later on some other thread, whose apartment the proxy would not
// belong to.
#include "com/worker.h"

#include <atomic>
#include <cstdint>
#include <ctime>
#include <thread>

#include "com/call_limit.h"
#include "com/owned.h"
#include "com/process.h"

namespace quillmate::com {
namespace {

constexpr std::int32_t kNobodyWaits = 0;
/// As long as a command's own thread retries.
constexpr std::chrono::seconds kBusyLimit(5);

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

  /// A stream that no thread came to read still holds a reference.
  ~Work() {
    if (stream == nullptr) return;
    stream->Seek({}, STREAM_SEEK_SET, nullptr);
    CoReleaseMarshalData(stream.Get());
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
  const CallLimit retry(kBusyLimit, AfterLimit::kWait);
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

}  // namespace

WorkerCall::WorkerCall(ComPtr<IUnknown> object, REFIID iid, std::function<void(IUnknown*)> call) {
  auto work = std::make_unique<Work>();
  // Without a stream the worker has no object, and says so.
  if (object != nullptr) CoMarshalInterThreadInterfaceInStream(iid, object.Get(), &work->stream);
  object.Reset();
  work->iid = iid;
  work->call = std::move(call);
  work->token = static_cast<std::int32_t>(std::time(nullptr));
  call_token = work->token;
  answer_ = work->promise.get_future();
  // The worker may outlive the host's use of the library.
  KeepLibraryLoaded();
  std::thread(RunWorker, std::move(work)).detach();
}

WorkerCall::~WorkerCall() { call_token = kNobodyWaits; }

bool WorkerCall::HasReturnedWithin(std::chrono::milliseconds wait) {
  if (answer_.wait_for(wait) != std::future_status::ready) return false;
  answer_.get();
  return true;
}

bool RunInTime(std::function<void()> job, std::chrono::milliseconds wait) {
  WorkerCall call(nullptr, IID_NULL, [job = std::move(job)](IUnknown*) { job(); });
  return call.HasReturnedWithin(wait);
}

}  // namespace quillmate::com
