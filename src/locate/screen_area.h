// Points and rectangles in screen pixels, and the arithmetic that decides what of an element can be seen.
#pragma once

namespace quillmate {

/// A point in screen pixels.
struct ScreenPoint {
  int x = 0;
  int y = 0;
  bool operator==(const ScreenPoint&) const = default;
};

/// A rectangle; right and bottom are the first pixels outside it. In screen pixels once every frame's offset
/// is added.
struct Rectangle {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;
  bool operator==(const Rectangle&) const = default;
};

/// The width and height of a document's view, in its client pixels.
struct ViewportSize {
  int width = 0;
  int height = 0;
};

/// Where a document lies and what of it can be seen, both in the coordinates of the level above (for a top
/// document: of the screen).
struct DocumentArea {
  /// Its left and top turn the document's client coordinates into those of the level above.
  Rectangle origin;
  Rectangle visible;
};

/// How far, in pixels, something may stick out of the visible area and still count as inside.
inline constexpr int kVisibilityTolerance = 2;

Rectangle Translated(const Rectangle& rectangle, ScreenPoint offset);
Rectangle Intersection(const Rectangle& a, const Rectangle& b);
/// The middle of a rectangle, each half pixel dropped toward zero.
ScreenPoint CenterOf(const Rectangle& rectangle);
bool IsInside(const Rectangle& inner, const Rectangle& visible);
bool IsInside(ScreenPoint point, const Rectangle& visible);

/// The area of a frame in its parent's client coordinates.
/// @param host the frame element's bounding rectangle.
DocumentArea FrameArea(const Rectangle& host, ViewportSize parent_viewport);
/// Lifts an area one level up: into the coordinates in which its parent's own area is given.
DocumentArea LiftedBy(const DocumentArea& area, const DocumentArea& parent);

}  // namespace quillmate
