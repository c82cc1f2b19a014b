// The registered type libraries of the browser's interfaces, loaded once and held for the process's life:
// without that every new proxy would read a whole library again.
#pragma once

#include <windows.h>
#include <oaidl.h>

namespace testbrowser::dom {

/// The description of an interface of MSHTML or of the browser object.
/// @return a pointer that lives as long as the process; null when no library knows the interface.
ITypeInfo* TypeInfoOf(REFIID iid);

}  // namespace testbrowser::dom
