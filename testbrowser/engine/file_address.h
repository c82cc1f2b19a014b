// Addresses of local files. Windows programs say file:///C:/x/y.htm, Chromium, which is no Windows program,
// says file:///home/u/…: what goes in is turned one way, what comes out the other.
#pragma once

#include <string>
#include <string_view>

namespace testbrowser::engine {

/// An address or a bare path in any form that Windows programs write (`C:\x`, `file://c:/a b.htm`,
/// `file:///Z:/…`) as Chromium's address; addresses of other schemes stay as they are. UTF-8.
std::string ToEngineAddress(std::string_view windows_address);
/// Chromium's `file:` address with the drive letter that Windows programs know it under; others stay as they
/// are.
std::string ToWindowsAddress(std::string_view engine_address);

}  // namespace testbrowser::engine
