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
  /// Wine's class table never learns that a server died: the entry of one that was killed would spoil every
  /// later creation. An entry for one object is gone as soon as that is asked for, so whoever may be killed
  /// serves one.
  enum class Use { kOneObject, kManyObjects };
  /// Objects are made on the calling thread, from its message loop.
  ClassObject(REFCLSID class_id, Use use, Maker make);
  ~ClassObject();
  ClassObject(const ClassObject&) = delete;
  ClassObject& operator=(const ClassObject&) = delete;

 private:
  DWORD cookie_ = 0;
};

}  // namespace testbrowser::shell
