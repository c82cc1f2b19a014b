// All areas, one after the other, each in processes of its own.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "arguments.h"
#include "results.h"

namespace quillmate::selftest {

struct AreaTests {
  std::string area;
  std::vector<std::string> tests;
};

/// The tests that the filter names, as the program itself lists them.
std::vector<AreaTests> FindTests(const std::string& filter);

/// Runs them and adds their results and the browser's answers to a run.
/// @param dll the library's file. @param ended is told of each result.
void RunAreas(const std::vector<AreaTests>& areas, const Options& options, const std::string& dll, Run& run,
              const std::function<void(const TestResult&)>& ended);

/// Ends the run after the test that is under way; the others are reported as not tried.
void StopRun();

}  // namespace quillmate::selftest
