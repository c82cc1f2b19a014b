// The result of a run on the screen.
#pragma once

#include <string>

#include "results.h"

namespace quillmate::selftest {

/// @return a line for a test that has ended, e.g. "  3/120  passed     0.4 s  Forms.TypesIntoAField".
std::string ProgressLine(const TestResult& test, std::size_t position, std::size_t count);

/// @return the table of areas, what failed, what could not be tried and why, and the browser's answers.
std::string TableOf(const Run& run);

}  // namespace quillmate::selftest
