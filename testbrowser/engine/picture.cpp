#include "engine/picture.h"

namespace testbrowser::engine {

void Picture::Paint(HDC target, int x, int y) const {
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = width_;
  info.bmiHeader.biHeight = -height_;  // negative: rows from the top
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  info.bmiHeader.biCompression = BI_RGB;
  SetDIBitsToDevice(target, x, y, width_, height_, 0, 0, 0, height_, pixels_.data(), &info, DIB_RGB_COLORS);
}

}  // namespace testbrowser::engine
