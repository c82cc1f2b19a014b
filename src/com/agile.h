// References that belong to the process: set on one thread, used on any. A COM pointer is good only in the
// apartment that got it, and only while that apartment lives, so each thread keeps pointers of its own.
#pragma once

#include <windows.h>
#include <cstdint>
#include <functional>
#include <utility>

#include "com/owned.h"

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

/// Brackets a command. A thread's first command leaves no pointers behind, so that a host with a thread for
/// each command does not grow; from the second one on they stay, which saves getting them again.
class ThreadObjectsScope {
 public:
  ThreadObjectsScope();
  ThreadObjectsScope(const ThreadObjectsScope&) = delete;
  ThreadObjectsScope& operator=(const ThreadObjectsScope&) = delete;
  ~ThreadObjectsScope();
};

/// See Agile.
class AgileReference {
 public:
  AgileReference() = default;
  AgileReference(ComPtr<IUnknown> object, REFIID iid, MayRelease may_release);
  AgileReference(AgileReference&& other) noexcept { *this = std::move(other); }
  AgileReference& operator=(AgileReference&& other) noexcept;
  ~AgileReference();

  IUnknown* Get() const;
  bool IsNull() const { return id_ == 0; }

 private:
  ObjectId id_ = 0;
  DWORD cookie_ = 0;
  IID iid_ = {};
  MayRelease may_release_;
};

/// An owning reference to an object of another process. It outlives the thread and the apartment that made
/// it. Each thread gets a pointer of its own when it first asks.
template <class T>
class Agile {
 public:
  Agile() = default;
  /// @param object null makes a null reference.
  /// @param may_release asked before the object is released.
  explicit Agile(ComPtr<T> object, MayRelease may_release = {})
      : reference_(std::move(object), __uuidof(T), std::move(may_release)) {}

  /// @return the thread's pointer, good until the command ends; null when the object cannot be reached.
  T* Get() const { return static_cast<T*>(reference_.Get()); }
  /// Whether there is an object; makes no call.
  bool IsNull() const { return reference_.IsNull(); }

 private:
  AgileReference reference_;
};

}  // namespace quillmate::com
