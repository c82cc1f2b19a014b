// References that belong to the process: set on one thread, used on any.
#pragma once

#include <windows.h>
#include <utility>

#include "com/com_ptr.h"
#include "com/thread_objects.h"

namespace quillmate::com {

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
