// The thread that looks at the calls of the one that runs a command.
#include "com/call_canceller.h"

#include <objbase.h>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <tuple>
#include <utility>

#include "com/call_watch.h"
#include "com/com_ptr.h"
#include "com/library_lifetime.h"

namespace quillmate::com {
namespace {

constexpr std::chrono::milliseconds kLookEvery(100);

/// What the looking thread works on. Commands take turns, so one thread is watched at a time.
struct Watched {
  std::mutex mutex;
  std::condition_variable changed;
  DWORD thread = 0;
  std::chrono::milliseconds limit{0};
  /// Counts the changes of the two above.
  unsigned turn = 0;
};

// Never destroyed: the looking thread outlives everything.
Watched& TheWatched() {
  static Watched& watched = *new Watched;
  return watched;
}

/// Deliberate: Wine ends the process at the call that would cancel another, so there it is not made.
bool CanCancel() {
  static const bool can = GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") == nullptr;
  return can;
}

/// Looks at the calls of one thread until another one, or none, is to be watched.
void Watch(std::unique_lock<std::mutex>& lock, Watched& watched) {
  const unsigned turn = watched.turn;
  CallWatch watch(watched.limit);
  // Held from one look to the next: its address then belongs to one call only.
  ComPtr<ICancelMethodCalls> call;
  while (watched.turn == turn) {
    ComPtr<ICancelMethodCalls> in_flight;
    CoGetCancelObject(watched.thread, __uuidof(ICancelMethodCalls),
                      reinterpret_cast<void**>(in_flight.GetAddressOf()));
    call = std::move(in_flight);
    if (watch.IsOverdue(call.Get(), CallWatch::Time::clock::now())) call->Cancel(0);
    watched.changed.wait_for(lock, kLookEvery);
  }
}

void Look() {
  Watched& watched = TheWatched();
  CoInitializeEx(nullptr, COINIT_MULTITHREADED);
  std::unique_lock lock(watched.mutex);
  for (;;) {
    watched.changed.wait(lock, [&] { return watched.thread != 0; });
    Watch(lock, watched);
  }
}

void StartLooking() {
  static const bool started = [] {
    KeepLibraryLoaded();
    std::thread(Look).detach();
    return true;
  }();
  static_cast<void>(started);
}

/// @return what was watched before.
std::pair<DWORD, std::chrono::milliseconds> SetWatched(DWORD thread, std::chrono::milliseconds limit) {
  Watched& watched = TheWatched();
  const std::lock_guard lock(watched.mutex);
  ++watched.turn;
  watched.changed.notify_all();
  return {std::exchange(watched.thread, thread), std::exchange(watched.limit, limit)};
}

}  // namespace

CallCanceller::CallCanceller(std::chrono::milliseconds limit)
    : enabled_(CanCancel() && SUCCEEDED(CoEnableCallCancellation(nullptr))) {
  if (!enabled_) return;
  StartLooking();
  std::tie(previous_thread_, previous_limit_) = SetWatched(GetCurrentThreadId(), limit);
}

CallCanceller::~CallCanceller() {
  if (!enabled_) return;
  SetWatched(previous_thread_, previous_limit_);
  CoDisableCallCancellation(nullptr);
}

}  // namespace quillmate::com
