// What a run prints: one JSON object a line, read by tools/bench.
#pragma once

#include <functional>
#include <string>

namespace quillmate::bench {

/// How a measure's value relates to its target.
enum class Wanted { kAtMost, kAtLeast };

/// Prints a measure.
/// @param value a ratio, or a rate a second, as the measure's name says.
void PrintMeasure(const std::string& measure, double value, Wanted wanted, double target);

/// Prints a figure that has no target.
void PrintFigure(const std::string& measure, double value);

/// Prints a point of a plot.
/// @param series the curve, "quillmate" or "bare loop" for instance.
/// @param size what the work grows with.
void PrintPoint(const std::string& plot, const std::string& series, double size, double milliseconds);

/// @return how long a job takes, in milliseconds.
double TimeOf(const std::function<void()>& job);

struct Pair {
  double ours = 0;
  double reference = 0;
  double Ratio() const { return ours / reference; }
};

/// Times two jobs in turn, so that what else the machine does meets both.
/// @return the shortest time of each, in milliseconds.
Pair SideBySide(int rounds, const std::function<void()>& ours, const std::function<void()>& reference);

}  // namespace quillmate::bench
