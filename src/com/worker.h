// Calls that may block indefinitely, for instance while the page shows a dialog or runs an endless script.
// Each runs on a thread and in an apartment of its own, and the caller waits for a limited time.
#pragma once

#include <windows.h>
#include <objbase.h>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <type_traits>
#include <utility>

#include "com/com_ptr.h"

namespace quillmate::com {

/// See CallOnWorker.
/// @param call given the object as the worker's apartment has it, of the type `iid`; null when it could not
/// be brought there.
/// @return whether the call came back in time.
bool RunOnWorker(ComPtr<IUnknown> object, REFIID iid, std::function<void(IUnknown*)> call,
                 std::chrono::milliseconds wait);

/// Makes a call on an object on a worker thread.
/// @param object moved in, so that the caller is left with nothing to release on a page that hangs.
/// @param wait how long the caller waits; the call itself goes on after that, unwatched.
/// @param call `R call(T*)`; its argument is null when the object could not be brought to the worker. It owns
/// what it needs: it may outlive the caller. What it throws, the caller gets.
/// @return what the call returned; nothing when it did not come back in time.
template <class T, class Call>
std::optional<std::invoke_result_t<Call, T*>> CallOnWorker(ComPtr<T> object, std::chrono::milliseconds wait,
                                                           Call call) {
  auto value = std::make_shared<std::invoke_result_t<Call, T*>>();
  const auto store = [value, call = std::move(call)](IUnknown* crossed) {
    *value = call(static_cast<T*>(crossed));
  };
  if (!RunOnWorker(std::move(object), __uuidof(T), store, wait)) return std::nullopt;
  return std::move(*value);
}

/// Makes calls that need no object on a worker thread.
/// @param call owns what it needs: it may outlive the caller.
/// @return whether it came back in time.
inline bool RunInTime(std::function<void()> call, std::chrono::milliseconds wait) {
  return RunOnWorker(
      {}, __uuidof(IUnknown), [call = std::move(call)](IUnknown*) { call(); }, wait);
}

}  // namespace quillmate::com
