// Addresses of local files. A page and its clients know a file as file:///C:/x/y.htm; Chromium, which is no
// Windows program, reads it as file:///home/u/….
#pragma once

#include <string>
#include <string_view>

namespace testbrowser::engine {

/// A file's address or bare path in any form that Windows programs write (`C:\x`, `file://c:/a b.htm`), or a
/// Linux address, as a page has it: `file:///C:/a%20b.htm`. Other addresses stay as they are. UTF-8.
std::string ToWindowsAddress(std::string_view address);
/// The address under which Chromium reads the file; what is no local file of a drive stays as it is. UTF-8.
std::string ToLinuxAddress(std::string_view windows_address);
/// The Linux path of an absolute Windows path; empty when there is none. What does not exist is spelled as given; of
/// the rest Wine finds the true spelling. UTF-8.
std::string LinuxPath(const std::string& windows_path);

}  // namespace testbrowser::engine
