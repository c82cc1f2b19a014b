// Holds the pointer's path to its promises, in a world whose clock, random numbers and pauses the test owns.
#include "input/mouse_path.h"

#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <vector>

namespace quillmate {
namespace {

constexpr int kIntMax = std::numeric_limits<int>::max();
constexpr int kIntMin = std::numeric_limits<int>::min();

/// A generator whose first number after seeding depends on the seed alone, and a clock that only pauses move.
class RecordingWorld : public MouseWorld {
 public:
  explicit RecordingWorld(unsigned start_second) : milliseconds_(start_second * 1000ULL) {}
  unsigned Seconds() override { return static_cast<unsigned>(milliseconds_ / 1000); }
  void SeedRandom(unsigned seed) override {
    ++seedings;
    generator_.seed(seed);
  }
  int NextRandom() override {
    ++draws;
    return static_cast<int>(generator_() & 0x7FFF);
  }
  void MoveTo(ScreenPoint point) override { points.push_back(point); }
  void Pause(std::chrono::milliseconds time) override {
    pauses.push_back(static_cast<int>(time.count()));
    milliseconds_ += static_cast<unsigned long long>(time.count());
  }

  std::vector<ScreenPoint> points;
  std::vector<int> pauses;
  int seedings = 0;
  int draws = 0;

 private:
  unsigned long long milliseconds_;
  std::mt19937 generator_;
};

RecordingWorld Follow(ScreenPoint start, ScreenPoint end, unsigned second = 1000) {
  RecordingWorld world(second);
  FollowMousePath(start, end, world);
  return world;
}

TEST(MousePath, AlreadyThereIsOneMoveAndNoPause) {
  const RecordingWorld world = Follow({40, 50}, {40, 50});
  EXPECT_EQ(world.points, (std::vector<ScreenPoint>{{40, 50}}));
  EXPECT_TRUE(world.pauses.empty());
  EXPECT_EQ(world.draws, 0);
}

TEST(MousePath, EveryDrawIsSeededAfresh) {
  const RecordingWorld world = Follow({0, 0}, {700, 300});
  EXPECT_GT(world.draws, 0);
  EXPECT_EQ(world.seedings, world.draws);
}

TEST(MousePath, KeepsItsPropertiesForManyLinesAndSeconds) {
  std::mt19937 pick(7);
  std::uniform_int_distribution<int> coordinate(-2000, 4000);
  for (int round = 0; round < 300; ++round) {
    const ScreenPoint start{coordinate(pick), coordinate(pick)};
    const ScreenPoint end{coordinate(pick), coordinate(pick)};
    const RecordingWorld world = Follow(start, end, pick() & 0xFFFFFF);
    const double distance = std::hypot(end.x - start.x, end.y - start.y);
    ASSERT_EQ(world.points.back(), end);
    ASSERT_EQ(world.pauses.size(), world.points.size() - 1);
    ScreenPoint previous = start;
    for (size_t i = 0; i < world.pauses.size(); ++i) {
      ASSERT_TRUE(world.pauses[i] >= 3 && world.pauses[i] <= 6);
      const ScreenPoint point = world.points[i];
      const bool strays = (i + 1) % 4 == 0;
      // Both ends of a step are cut to whole pixels, toward zero; a straying step is up to two more off, in x
      // only.
      const double step = std::hypot(point.x - previous.x, point.y - previous.y);
      const double slack = 2.9 + (strays || i % 4 == 0 ? 2 : 0);
      ASSERT_GE(step, 16 - slack);
      ASSERT_LE(step, 20 + slack);
      const double off_line = std::abs((point.x - start.x) * double(end.y - start.y) -
                                       (point.y - start.y) * double(end.x - start.x)) /
                              distance;
      ASSERT_LE(off_line, strays ? 3.5 : 1.5);
      const double travelled = std::hypot(point.x - start.x, point.y - start.y);
      const bool last = i + 1 == world.pauses.size();
      ASSERT_LE(travelled, distance + 20 + 3.5);
      if (last) {
        ASSERT_GE(travelled, distance - 3.5);
      } else {
        ASSERT_LE(travelled, distance + 3.5);
      }
      previous = point;
    }
  }
}

TEST(MousePath, StepAndPauseStayTheSameWithinASecond) {
  const RecordingWorld world = Follow({0, 0}, {0, 400});
  for (size_t i = 1; i + 1 < world.points.size(); ++i) {
    EXPECT_EQ(world.points[i].y - world.points[i - 1].y, world.points[0].y);
    EXPECT_EQ(world.pauses[i], world.pauses[0]);
  }
  // Two equal draws make the sideways step even: -2, 0 or 2.
  EXPECT_EQ(world.points[3].x % 2, 0);
}

TEST(MousePath, ChangesWithTheSecond) {
  bool changed = false;
  for (unsigned second = 1; second < 20; ++second) {
    changed = changed || Follow({0, 0}, {0, 100}, second).points != Follow({0, 0}, {0, 100}, 0).points;
  }
  EXPECT_TRUE(changed);
}

/// Numbers handed out in a fixed order, whatever the seed.
class ScriptedWorld : public RecordingWorld {
 public:
  explicit ScriptedWorld(std::vector<int> numbers) : RecordingWorld(0), numbers_(std::move(numbers)) {}
  int NextRandom() override { return numbers_.at(static_cast<size_t>(draws++)); }

 private:
  std::vector<int> numbers_;
};

TEST(MousePath, DrawsStepJitterAndPauseInThatOrder) {
  // Steps of 16 along x; the fourth strays by (2 - 2 + 2), and each pause is its own draw.
  ScriptedWorld world({0, 0, 0, 1, 0, 2, 0, 2, 2, 3});
  FollowMousePath({10, 10}, {70, 10}, world);
  EXPECT_EQ(world.points, (std::vector<ScreenPoint>{{26, 10}, {42, 10}, {58, 10}, {76, 10}, {70, 10}}));
  EXPECT_EQ(world.pauses, (std::vector<int>{3, 4, 5, 6}));
}

TEST(MousePath, HundredPixelsTakeFiveToSevenSteps) {
  for (unsigned second = 0; second < 50; ++second) {
    const size_t steps = Follow({0, 0}, {100, 0}, second).pauses.size();
    EXPECT_TRUE(steps >= 5 && steps <= 7) << steps;
  }
}

/// Ends a path that would be endless to watch.
class BoundedWorld : public RecordingWorld {
 public:
  BoundedWorld() : RecordingWorld(5) {}
  void Pause(std::chrono::milliseconds time) override {
    RecordingWorld::Pause(time);
    if (pauses.size() == 2000) throw *this;
  }
};

TEST(MousePath, FarPointsWrapWithoutUndefinedArithmetic) {
  const std::pair<ScreenPoint, ScreenPoint> lines[] = {
      {{kIntMin, kIntMin}, {kIntMax, kIntMax}}, {{0, 0}, {kIntMax, kIntMin}}, {{kIntMax, 0}, {kIntMin, 0}}};
  for (const auto& [start, end] : lines) {
    BoundedWorld world;
    EXPECT_THROW(FollowMousePath(start, end, world), BoundedWorld);
  }
}

TEST(AbsoluteCoordinate, MapsTheScreenOntoItsRange) {
  EXPECT_EQ(ToAbsoluteCoordinate(0, 1280), 0);
  EXPECT_EQ(ToAbsoluteCoordinate(1279, 1280), 65535);
  EXPECT_EQ(ToAbsoluteCoordinate(1, 1280), 51);
  EXPECT_EQ(ToAbsoluteCoordinate(-1, 1280), -51);
  EXPECT_EQ(ToAbsoluteCoordinate(32769, 2), -2147450881) << "the product wraps at 32 bits";
  EXPECT_EQ(ToAbsoluteCoordinate(10, 1), 0) << "a screen of one pixel divides by nothing";
}

}  // namespace
}  // namespace quillmate
