// The machine and its browsers, as far as a reader of the report needs them.
#pragma once

#include <string>
#include <vector>

#include "results.h"

namespace quillmate::selftest {

/// @return "ie" or "edge", whichever can be automated here; empty when neither.
std::string FindBrowser();

/// @param browser as above. Names neither the user nor the machine.
std::vector<Line> DescribeMachine(const std::string& browser);

}  // namespace quillmate::selftest
