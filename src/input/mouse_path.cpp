#include "input/mouse_path.h"

#include <cmath>
#include <limits>

namespace quillmate {
namespace {

constexpr int kStepsBetweenJitters = 4;

/// 32-bit products and sums that wrap as the processor's do, without undefined overflow.
std::int32_t WrapTo32(std::int64_t value) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(value));
}

std::int32_t TruncateTo32(double value) {
  using Limits = std::numeric_limits<std::int32_t>;
  if (value >= Limits::max()) return Limits::max();
  if (value <= Limits::min()) return Limits::min();
  return static_cast<std::int32_t>(value);
}

/// One random number. Deliberate: the generator is seeded with the time before every draw. Within one second
/// every draw is the same, so that steps and pauses stay regular for that second.
int Draw(MouseWorld& world) {
  world.SeedRandom(world.Seconds());
  return world.NextRandom();
}

/// One coordinate of the point that lies `travelled` pixels along a line of length `distance`.
std::int32_t Along(std::int32_t from, std::int32_t to, std::int64_t travelled, double distance) {
  const auto span = static_cast<std::uint32_t>(to) - static_cast<std::uint32_t>(from);
  const std::int32_t product = WrapTo32(std::int64_t{span * static_cast<std::uint32_t>(travelled)});
  return TruncateTo32(product / distance + from);
}

double Distance(ScreenPoint a, ScreenPoint b) {
  const double dx = static_cast<double>(b.x) - a.x;
  const double dy = static_cast<double>(b.y) - a.y;
  return std::sqrt(dy * dy + dx * dx);
}

}  // namespace

void FollowMousePath(ScreenPoint start, ScreenPoint end, MouseWorld& world) {
  const double distance = Distance(start, end);
  int steps = 0;
  for (std::int64_t travelled = 0; distance > static_cast<double>(travelled);) {
    travelled += Draw(world) % 5 + 16;
    ScreenPoint point{Along(start.x, end.x, travelled, distance), Along(start.y, end.y, travelled, distance)};
    if (++steps % kStepsBetweenJitters == 0) {
      const int jitter = Draw(world) % 3 - 2 + Draw(world) % 3;
      point.x = WrapTo32(std::int64_t{point.x} + jitter);
    }
    world.MoveTo(point);
    world.Pause(std::chrono::milliseconds(Draw(world) % 4 + 3));
  }
  world.MoveTo(end);
}

std::int32_t ToAbsoluteCoordinate(std::int32_t pixel, std::int32_t extent) {
  if (extent <= 1) return 0;
  return WrapTo32(std::int64_t{pixel} * 65535) / (extent - 1);
}

}  // namespace quillmate
