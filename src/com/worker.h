// Calls that may block indefinitely, for instance while the page shows a dialog or runs an endless script.
// Each runs on a thread and in an apartment of its own, and the caller waits for a limited time.
#pragma once

#include <windows.h>
#include <objbase.h>
#include <chrono>
#include <functional>
#include <future>
#include <memory>
#include <optional>
#include <type_traits>
#include <utility>

#include "com/owned.h"

namespace quillmate::com {

/// A call on a worker thread, for which the caller waits in one step or several. Destroyed before the call
/// has returned, it is abandoned: the call goes on unwatched, and what it returns is dropped.
class WorkerCall {
 public:
  /// @param object moved in and released before the call begins, so that the caller has nothing to release on
  /// a page that hangs.
  /// @param call given the object as the worker's apartment has it, of the type `iid`; null when it could not
  /// be brought there.
  WorkerCall(ComPtr<IUnknown> object, REFIID iid, std::function<void(IUnknown*)> call);
  WorkerCall(const WorkerCall&) = delete;
  WorkerCall& operator=(const WorkerCall&) = delete;
  ~WorkerCall();

  /// Waits at most this long. What the call threw, the caller gets, once.
  /// @return whether the call has returned.
  bool HasReturnedWithin(std::chrono::milliseconds wait);

 private:
  std::future<void> answer_;
};

/// A worker call that returns a value.
template <class T, class Call>
class WorkerCallFor {
 public:
  using Value = std::invoke_result_t<Call, T*>;

  /// @param call `Value call(T*)`; its argument is null when the object could not be brought to the worker.
  /// It owns what it needs: it may outlive the caller.
  WorkerCallFor(ComPtr<T> object, Call call)
      : call_(std::move(object), __uuidof(T), [value = value_, call = std::move(call)](IUnknown* crossed) {
          *value = call(static_cast<T*>(crossed));
        }) {}

  /// @return what the call returned, once; nothing when it has not returned in time.
  std::optional<Value> WaitFor(std::chrono::milliseconds wait) {
    if (!call_.HasReturnedWithin(wait)) return std::nullopt;
    return std::move(*value_);
  }

 private:
  std::shared_ptr<Value> value_ = std::make_shared<Value>();
  WorkerCall call_;
};

/// Makes a call on an object on a worker thread and waits for it.
/// @return what the call returned; nothing when it did not return in time.
template <class T, class Call>
std::optional<std::invoke_result_t<Call, T*>> CallOnWorker(ComPtr<T> object, std::chrono::milliseconds wait,
                                                           Call call) {
  return WorkerCallFor<T, Call>(std::move(object), std::move(call)).WaitFor(wait);
}

/// Does something on a worker thread and waits for it, at most this long; after that it goes on unwatched.
/// @param job owns what it needs. @return whether it ended in time.
bool RunInTime(std::function<void()> job, std::chrono::milliseconds wait);

}  // namespace quillmate::com
