#pragma once

#include <windows.h>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>

namespace quillmate {

struct BitmapDeleter {
  void operator()(HBITMAP bitmap) const { DeleteObject(bitmap); }
};
using UniqueBitmap = std::unique_ptr<std::remove_pointer_t<HBITMAP>, BitmapDeleter>;

/// A picture in memory that can be drawn into and read: a device-independent bitmap; its rows begin at the
/// top.
class Pixels {
 public:
  /// @param bits_per_pixel 16, 24 or 32; any other depth becomes 32.
  /// @return nothing when the size is not positive or there is no memory for it.
  static std::optional<Pixels> Create(int width, int height, int bits_per_pixel);

  /// Copies from a device context, beginning at a point of it.
  bool CopyFrom(HDC source, int left, int top);

  int width() const { return width_; }
  int height() const { return height_; }
  int bits_per_pixel() const { return bits_per_pixel_; }
  /// Bytes from one row to the next: rows end on a multiple of four.
  int stride() const { return (width_ * bits_per_pixel_ + 31) / 32 * 4; }
  unsigned char* data() const { return data_; }

 private:
  Pixels(UniqueBitmap bitmap, unsigned char* data, int width, int height, int bits_per_pixel)
      : bitmap_(std::move(bitmap)),
        data_(data),
        width_(width),
        height_(height),
        bits_per_pixel_(bits_per_pixel) {}

  UniqueBitmap bitmap_;
  unsigned char* data_;
  int width_;
  int height_;
  int bits_per_pixel_;
};

/// Whether a file name's extension, the text after its last ".", is exactly "bmp", "png" or "tif".
bool IsImageFileName(const std::string& file_name);

/// Writes a picture in the format of the file name's extension; an existing file is replaced, a missing
/// folder is not made.
/// @param folder, file_name in the ANSI code page.
/// @return whether the file was written.
bool SaveImage(const Pixels& pixels, const std::string& folder, const std::string& file_name);

}  // namespace quillmate
