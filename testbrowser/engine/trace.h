// What goes wrong between this program and Chromium leaves its trace: a line of the debugger's output and of
// the file "testbrowser.log" in the temporary folder.
#pragma once

#include <string>

namespace testbrowser::engine {

void Trace(const std::string& text);

}  // namespace testbrowser::engine
