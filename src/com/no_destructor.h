#pragma once

#include <new>
#include <utility>

namespace quillmate::com {

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

}  // namespace quillmate::com
