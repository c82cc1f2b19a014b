// What the program was started for.
#pragma once

#include <string>
#include <vector>

namespace testbrowser::shell {

struct CommandLine {
  enum class Purpose {
    kBrowse,        ///< a browser on an address
    kServeBrowser,  ///< -Embedding: a server of the browser object
    kServeWindows,  ///< -ShellWindows: the server of the shell's window collection
    kRegister,
    kMistake
  };
  Purpose purpose = Purpose::kBrowse;
  bool started_by_com = false;
  bool hosted = false;
  bool hidden = false;
  std::vector<std::wstring> switches;  ///< "NAME=VALUE"
  std::wstring title_suffix;           ///< empty: the shell's own
  std::wstring address = L"about:blank";
};

/// @param arguments without the program's name.
CommandLine ParseCommandLine(const std::vector<std::wstring>& arguments);

inline constexpr char kUsage[] =
    "usage: testbrowser [--shell ie|hosted] [--hidden] [--title-suffix TEXT]\n"
    "                   [--answer NAME=ANSWER]... [--switch NAME=VALUE]... [ADDRESS]\n"
    "       testbrowser --register\n";

}  // namespace testbrowser::shell
