// The process that runs tests: a crash or a hang ends it, and not the run.
#pragma once

#include <string>

#include "arguments.h"

namespace quillmate::selftest {

/// Runs what the filter names, and writes a message a line to standard output.
/// @return the process's exit code.
int RunArea(const Options& options);

/// Writes the tests that the filter names to standard output, each area before its tests.
int ListTests(const std::string& filter);

}  // namespace quillmate::selftest
