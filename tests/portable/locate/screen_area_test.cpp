// Holds the visibility arithmetic: which of an element's pixels count as seen through its frames.
#include "locate/screen_area.h"

#include <gtest/gtest.h>

namespace quillmate {
namespace {

TEST(ScreenArea, TwoPixelsOutsideAreForgivenThreeAreNot) {
  const Rectangle visible{100, 100, 300, 200};
  const struct {
    Rectangle element;
    bool inside;
  } rows[] = {
      {{100, 100, 300, 200}, true}, {{98, 98, 302, 202}, true},    {{97, 100, 300, 200}, false},
      {{100, 97, 300, 200}, false}, {{100, 100, 303, 200}, false}, {{100, 100, 300, 203}, false},
  };
  for (const auto& row : rows) EXPECT_EQ(IsInside(row.element, visible), row.inside) << row.element.left;
  EXPECT_TRUE(IsInside(ScreenPoint{98, 202}, visible));
  EXPECT_FALSE(IsInside(ScreenPoint{98, 203}, visible));
}

TEST(ScreenArea, CenterDropsHalfPixelsTowardZero) {
  EXPECT_EQ(CenterOf({0, 0, 5, 8}), (ScreenPoint{2, 4}));
  EXPECT_EQ(CenterOf({-5, -8, 0, 0}), (ScreenPoint{-2, -4}));
}

TEST(ScreenArea, FrameIsCutByItsParentsView) {
  // Half scrolled out at the top, sticking out at the right.
  const DocumentArea area = FrameArea({50, -40, 900, 100}, {800, 600});
  EXPECT_EQ(area.origin, (Rectangle{50, -40, 900, 100}));
  EXPECT_EQ(area.visible, (Rectangle{50, 0, 799, 100}));
}

TEST(ScreenArea, NestedFramesAddTheirOffsetsAndMeetTheirViews) {
  const DocumentArea inner = FrameArea({10, 20, 110, 220}, {300, 150});
  const DocumentArea outer{{1000, 500, 1300, 650}, {1000, 500, 1050, 650}};
  const DocumentArea lifted = LiftedBy(inner, outer);
  EXPECT_EQ(lifted.origin, (Rectangle{1010, 520, 1110, 720}));
  EXPECT_EQ(lifted.visible, (Rectangle{1010, 520, 1050, 649}));
}

}  // namespace
}  // namespace quillmate
