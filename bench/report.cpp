#include "report.h"

#include <windows.h>
#include <algorithm>
#include <cstdio>
#include <limits>

namespace quillmate::bench {
namespace {

double Now() {
  LARGE_INTEGER count;
  LARGE_INTEGER frequency;
  QueryPerformanceCounter(&count);
  QueryPerformanceFrequency(&frequency);
  return 1000.0 * static_cast<double>(count.QuadPart) / static_cast<double>(frequency.QuadPart);
}

}  // namespace

void PrintMeasure(const std::string& measure, double value, Wanted wanted, double target) {
  const bool holds = wanted == Wanted::kAtMost ? value <= target : value >= target;
  std::printf("{\"measure\": \"%s\", \"value\": %.4g, \"target\": %.4g, \"holds\": %s}\n", measure.c_str(),
              value, target, holds ? "true" : "false");
  std::fflush(stdout);
}

void PrintFigure(const std::string& measure, double value) {
  std::printf("{\"measure\": \"%s\", \"value\": %.6g, \"target\": null, \"holds\": true}\n", measure.c_str(),
              value);
  std::fflush(stdout);
}

void PrintPoint(const std::string& plot, const std::string& series, double size, double milliseconds) {
  std::printf("{\"plot\": \"%s\", \"series\": \"%s\", \"size\": %.6g, \"ms\": %.6g}\n", plot.c_str(),
              series.c_str(), size, milliseconds);
  std::fflush(stdout);
}

double TimeOf(const std::function<void()>& job) {
  const double begin = Now();
  job();
  return Now() - begin;
}

Pair SideBySide(int rounds, const std::function<void()>& ours, const std::function<void()>& reference) {
  Pair shortest{std::numeric_limits<double>::max(), std::numeric_limits<double>::max()};
  for (int round = 0; round < rounds; ++round) {
    shortest.ours = std::min(shortest.ours, TimeOf(ours));
    shortest.reference = std::min(shortest.reference, TimeOf(reference));
  }
  return shortest;
}

}  // namespace quillmate::bench
