// A human-like pointer path: steps of 16 to 20 pixels with occasional sideways jitter.
#pragma once

#include <chrono>
#include <cstdint>

#include "locate/screen_area.h"

namespace quillmate {

/// What a movement asks of the world outside it; tests put a world of their own here.
class MouseWorld {
 public:
  virtual ~MouseWorld() = default;
  /// The calendar time in whole seconds, cut to the width of a seed.
  virtual unsigned Seconds() = 0;
  virtual void SeedRandom(unsigned seed) = 0;
  /// The next random number, never negative.
  virtual int NextRandom() = 0;
  virtual void MoveTo(ScreenPoint point) = 0;
  virtual void Pause(std::chrono::milliseconds time) = 0;
};

/// Moves from start to end in steps of 16 to 20 pixels along the line, pausing 3 to 6 ms after each; every
/// fourth step strays by up to two pixels sideways (in x alone). The last step may pass the end by up to 20
/// pixels before the pointer is put exactly on it. A start that is already the end makes one move and no
/// pause.
void FollowMousePath(ScreenPoint start, ScreenPoint end, MouseWorld& world);

/// A screen coordinate as the absolute coordinate of a synthesised move, in which the last pixel is 65535.
/// @param extent the screen's width or height in pixels.
std::int32_t ToAbsoluteCoordinate(std::int32_t pixel, std::int32_t extent);

}  // namespace quillmate
