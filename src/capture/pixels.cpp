// DIB sections.
#include "capture/pixels.h"

namespace quillmate::capture {
namespace {

int SupportedDepth(int bits_per_pixel) {
  return bits_per_pixel == 16 || bits_per_pixel == 24 ? bits_per_pixel : 32;
}

}  // namespace

std::optional<Pixels> Pixels::Create(int width, int height, int bits_per_pixel) {
  if (width <= 0 || height <= 0) return std::nullopt;
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = width;
  info.bmiHeader.biHeight = -height;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = static_cast<WORD>(SupportedDepth(bits_per_pixel));
  info.bmiHeader.biCompression = BI_RGB;
  void* data = nullptr;
  UniqueBitmap bitmap(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &data, nullptr, 0));
  if (bitmap == nullptr) return std::nullopt;
  return Pixels(std::move(bitmap), static_cast<unsigned char*>(data), width, height,
                SupportedDepth(bits_per_pixel));
}

bool Pixels::CopyFrom(HDC source, int left, int top) {
  const UniqueDc memory(CreateCompatibleDC(source));
  if (memory == nullptr) return false;
  const BitmapSelection selection(memory.get(), bitmap_.get());
  const bool copied = BitBlt(memory.get(), 0, 0, width_, height_, source, left, top, SRCCOPY) != FALSE;
  GdiFlush();
  return copied;
}

}  // namespace quillmate::capture
