#include "locate/screen_area.h"

#include <algorithm>

namespace quillmate {

Rectangle Translated(const Rectangle& rectangle, ScreenPoint offset) {
  return {rectangle.left + offset.x, rectangle.top + offset.y, rectangle.right + offset.x,
          rectangle.bottom + offset.y};
}

Rectangle Intersection(const Rectangle& a, const Rectangle& b) {
  return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
          std::min(a.bottom, b.bottom)};
}

ScreenPoint CenterOf(const Rectangle& rectangle) {
  return {(rectangle.left + rectangle.right) / 2, (rectangle.top + rectangle.bottom) / 2};
}

bool IsInside(const Rectangle& inner, const Rectangle& visible) {
  return inner.left >= visible.left - kVisibilityTolerance &&
         inner.top >= visible.top - kVisibilityTolerance &&
         inner.right <= visible.right + kVisibilityTolerance &&
         inner.bottom <= visible.bottom + kVisibilityTolerance;
}

bool IsInside(ScreenPoint point, const Rectangle& visible) {
  return IsInside(Rectangle{point.x, point.y, point.x, point.y}, visible);
}

DocumentArea FrameArea(const Rectangle& host, ViewportSize parent_viewport) {
  // The last visible column and row are width - 1 and height - 1, so a frame that fills its parent loses one
  // pixel.
  const Rectangle view{0, 0, parent_viewport.width - 1, parent_viewport.height - 1};
  return {host, Intersection(host, view)};
}

DocumentArea LiftedBy(const DocumentArea& area, const DocumentArea& parent) {
  const ScreenPoint offset{parent.origin.left, parent.origin.top};
  return {Translated(area.origin, offset), Intersection(Translated(area.visible, offset), parent.visible)};
}

}  // namespace quillmate
