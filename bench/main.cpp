// usage: quillmate-bench [MEASURE...]: tables, ids, walk, direct, frames, checks, discovery, library; all
// without.
#include <algorithm>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include "measures.h"

namespace {

using namespace quillmate::bench;

struct Measure {
  const char* name;
  void (*run)(Desk&);
};

const Measure kMeasures[] = {
    {"discovery", [](Desk&) { MeasureDiscovery(); }},
    {"checks", [](Desk&) { MeasureChecks(); }},
    {"library", [](Desk&) { MeasureLibrary(); }},
    {"direct", MeasureDirectLocators},
    {"frames", MeasureFrames},
    {"walk", MeasureWalk},
    {"ids", MeasureIdPaths},
    {"tables", MeasureTables},
};

int RunMeasures(const std::vector<std::string>& wanted) {
  Desk desk;
  for (const Measure& measure : kMeasures) {
    if (wanted.empty() || std::ranges::find(wanted, measure.name) != wanted.end()) measure.run(desk);
  }
  return 0;
}

}  // namespace

int main(int count, char** arguments) {
  const std::vector<std::string> words(arguments + 1, arguments + count);
  if (words.size() == 2 && words[0] == "--windows") return ShowForeignWindows(std::atoi(words[1].c_str())), 0;
  if (words.size() == 1 && words[0] == "--load") return TimeLoading();
  try {
    return RunMeasures(words);
  } catch (const std::exception& error) {
    std::cerr << "quillmate-bench: " << error.what() << '\n';
    return 1;
  }
}
