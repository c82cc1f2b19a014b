// The calling thread's own pointers to COM objects that outlive a command. A COM pointer is good in the
// apartment that got it and nowhere else, and only for as long as that apartment lives.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>

#include "com/com_ptr.h"

namespace quillmate::com {

/// Names an object that belongs to the process; never used twice.
using ObjectId = std::uint64_t;

/// Whether releasing the object returns soon. A release is a call to the object's process too, and a page
/// that hangs would never return it. Asked from any thread; an empty function means yes.
using MayRelease = std::function<bool()>;

/// @return a new object's id. Call it and the functions below inside a command: commands take turns.
ObjectId NewObjectId();

/// @return the thread's pointer; null when it has none yet.
IUnknown* FindThreadObject(ObjectId id);

/// Keeps a pointer for the thread's later commands.
void KeepThreadObject(ObjectId id, ComPtr<IUnknown> object, MayRelease may_release);

/// Ends an object. Other threads drop their pointers when they run their next command.
/// @param release false leaks the thread's pointer, because releasing it might not return.
void EndThreadObjects(ObjectId id, bool release);

/// Keeps an object whose worker did not return in time until the worker has ended: until then a release
/// might not return either.
void ParkThreadObject(ComPtr<IUnknown> object, std::shared_ptr<std::atomic<bool>> worker_ended);

/// Brackets a command. A thread's first command leaves no pointers behind, so that a host with a thread for
/// each command does not grow; from the second one on they stay, which saves getting them again.
class ThreadObjectsScope {
 public:
  ThreadObjectsScope();
  ThreadObjectsScope(const ThreadObjectsScope&) = delete;
  ThreadObjectsScope& operator=(const ThreadObjectsScope&) = delete;
  ~ThreadObjectsScope();
};

}  // namespace quillmate::com
