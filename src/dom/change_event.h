// The event by which a page learns that a control was changed: a change made through the object model raises
// none.
#pragma once

#include <windows.h>
#include <mshtml.h>

namespace quillmate::dom {

/// Raises the page's change event on an element, as the page's document mode has it. Returns when its
/// handlers do: a handler that opens a message box holds the caller, so commands raise it on a worker.
void RaiseChange(IHTMLElement* element);

}  // namespace quillmate::dom
