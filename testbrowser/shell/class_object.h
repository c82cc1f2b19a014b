// A class that other processes create objects of, for as long as this lives.
#pragma once

#include <windows.h>
#include <functional>

#include "dom/com_object.h"
#include "generated/shell_stubs.h"

namespace testbrowser::shell {

class ClassObject {
 public:
  using Maker = std::function<HRESULT(REFIID iid, void** out)>;
  /// Objects are made on the calling thread, from its message loop.
  ClassObject(REFCLSID class_id, Maker make);
  ~ClassObject();
  ClassObject(const ClassObject&) = delete;
  ClassObject& operator=(const ClassObject&) = delete;

 private:
  DWORD cookie_ = 0;
};

}  // namespace testbrowser::shell
