// One picture of a page, ready to be painted into a window.
#pragma once

#include <windows.h>
#include <cstdint>
#include <vector>

namespace testbrowser::engine {

class Picture {
 public:
  /// @param pixels rows from the top, 32 bits a pixel (blue, green, red, unused), without padding.
  Picture(int width, int height, std::vector<std::uint32_t> pixels)
      : width_(width), height_(height), pixels_(std::move(pixels)) {}

  int width() const { return width_; }
  int height() const { return height_; }
  const std::vector<std::uint32_t>& pixels() const { return pixels_; }
  /// Paints the picture pixel for pixel with its top left corner at (x, y); what lies outside the clip is
  /// cut.
  void Paint(HDC target, int x, int y) const;

 private:
  int width_;
  int height_;
  std::vector<std::uint32_t> pixels_;
};

}  // namespace testbrowser::engine
