// The command line of quillmate-selftest.
#pragma once

#include <expected>
#include <span>
#include <string>

namespace quillmate::selftest {

enum class Input { kAsk, kTake, kLeave };

struct Options {
  std::string browser;  ///< "ie" or "edge"; empty for whichever is there
  std::string filter = "*";
  std::string report = "quillmate-selftest.html";
  std::string dll;   ///< empty for the library inside the program
  std::string area;  ///< of a process that runs the tests of one area
  Input input = Input::kAsk;
  int limit_s = 240;  ///< for one test
  bool list = false;
  bool help = false;
};

std::expected<Options, std::string> ParseOptions(std::span<const std::string> arguments);

inline constexpr char kHelp[] =
    R"(Tries Quillmate on this machine, with the browser that is here, and writes a report to send back.

usage: quillmate-selftest [OPTIONS]

  --browser ie|edge  Internet Explorer, or Edge in its Internet Explorer mode; without it, whichever is here
  --input            takes mouse and keyboard without a question
  --no-input         leaves mouse and keyboard alone, and the tests that need them out
  --filter PATTERN   only these tests, e.g. Forms.*:Facts.* or *-Waits.*
  --report FILE      where the report goes; quillmate-selftest.html here
  --dll FILE         tries this library, not the one inside this program
  --limit SECONDS    for one test; 240
  --list             only names the tests
  --help             this text

Close every browser window first. A whole run takes about twenty minutes. With the mouse and the keyboard taken, nobody
should use the machine meanwhile. Nothing is installed, and nothing leaves the machine: sending the report is up to you.

Exit code: 0 no test failed, 1 some did, 2 nothing could be tried.
)";

}  // namespace quillmate::selftest
