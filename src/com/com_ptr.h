#pragma once

#include <windows.h>
#include <unknwn.h>
#include <wrl/client.h>

namespace quillmate::com {

using Microsoft::WRL::ComPtr;

/// Asks an object for another of its interfaces.
/// @return the interface, owned; null when the object is null or has no such interface.
template <class T>
ComPtr<T> Query(IUnknown* object) {
  ComPtr<T> result;
  if (object != nullptr) object->QueryInterface(__uuidof(T), reinterpret_cast<void**>(result.GetAddressOf()));
  return result;
}

template <class T, class U>
ComPtr<T> Query(const ComPtr<U>& object) {
  // Asked through its own type: an object of several interfaces has several IUnknown bases.
  ComPtr<T> result;
  if (object != nullptr) object->QueryInterface(__uuidof(T), reinterpret_cast<void**>(result.GetAddressOf()));
  return result;
}

/// Whether two interface pointers belong to the same object (compared through IUnknown; two nulls are the
/// same).
inline bool IsSameObject(IUnknown* a, IUnknown* b) {
  return Query<IUnknown>(a).Get() == Query<IUnknown>(b).Get();
}

}  // namespace quillmate::com
