// The library as a guest in the host's process: how long it stays, how its commands take turns, how it sleeps.
#pragma once

#include <windows.h>
#include <chrono>
#include <new>
#include <utility>

namespace quillmate::com {

/// Keeps the library loaded until the process ends. Call it before something outside starts to hold the
/// library's code: a thread, or a callback that the system calls later.
void KeepLibraryLoaded();

/// A global or static object whose destructor never runs. The library is unloaded under the loader lock,
/// where releasing another process's object hangs, so what holds such objects is given up with the
/// process.
template <class T>
class NoDestructor {
 public:
  template <class... Arguments>
  explicit NoDestructor(Arguments&&... arguments) {
    new (storage_) T(std::forward<Arguments>(arguments)...);
  }
  NoDestructor(const NoDestructor&) = delete;
  NoDestructor& operator=(const NoDestructor&) = delete;

  T& operator*() { return *std::launder(reinterpret_cast<T*>(storage_)); }
  T* operator->() { return &**this; }

 private:
  alignas(T) unsigned char storage_[sizeof(T)];
};

/// Suspends the calling thread. The one place where the library sleeps.
void Pause(std::chrono::milliseconds time);

/// Asks a condition up to `rounds` times, with a pause after each time that it does not hold.
/// @return whether it held.
template <class Condition>
bool PollUntil(int rounds, std::chrono::milliseconds interval, Condition condition) {
  for (int round = 0; round < rounds; ++round) {
    if (condition()) return true;
    Pause(interval);
  }
  return false;
}

/// Holds the process's command lock. The owning thread may take it again. A thread that waits for it goes on
/// serving what other threads and processes send to its windows, and in a single-threaded apartment the calls
/// to its objects: the running command may need an answer from them.
class CommandLock {
 public:
  CommandLock();
  CommandLock(const CommandLock&) = delete;
  CommandLock& operator=(const CommandLock&) = delete;
  ~CommandLock();
};

}  // namespace quillmate::com
