// The result of a run as one HTML file that stands on its own.
#pragma once

#include <string>

#include "results.h"

namespace quillmate::selftest {

std::string PageOf(const Run& run);

}  // namespace quillmate::selftest
