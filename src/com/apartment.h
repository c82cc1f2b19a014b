#pragma once

#include <windows.h>
#include <objbase.h>

namespace quillmate::com {

/// Puts the thread into a single-threaded apartment. A thread that is in a multi-threaded one already stays
/// there.
class Apartment {
 public:
  Apartment() : result_(CoInitialize(nullptr)) {}
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;
  ~Apartment() {
    if (SUCCEEDED(result_)) CoUninitialize();
  }

 private:
  HRESULT result_;
};

}  // namespace quillmate::com
