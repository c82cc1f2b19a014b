// Making this program the Internet Explorer of a Wine prefix.
#pragma once

namespace testbrowser::shell {

/// Copies this program to Internet Explorer's place and registers it as the local server of the browser
/// object and of the shell's window collection.
/// @return the program's exit code; what failed is on standard error.
int Register();

}  // namespace testbrowser::shell
