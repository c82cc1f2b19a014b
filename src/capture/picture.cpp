#include "capture/picture.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <vector>

// The GDI+ headers count on two macros and a header that a lean windows.h leaves out.
#include <objidl.h>
using std::max;
using std::min;
#include <gdiplus.h>

#include "com/encoding.h"
#include "com/process.h"

namespace quillmate {
namespace {

struct DcDeleter {
  void operator()(HDC dc) const { DeleteDC(dc); }
};
/// A device context of our own making.
using UniqueDc = std::unique_ptr<std::remove_pointer_t<HDC>, DcDeleter>;

/// Puts a bitmap into a device context for as long as the guard lives.
class BitmapSelection {
 public:
  BitmapSelection(HDC dc, HBITMAP bitmap) : dc_(dc), previous_(SelectObject(dc, bitmap)) {}
  BitmapSelection(const BitmapSelection&) = delete;
  BitmapSelection& operator=(const BitmapSelection&) = delete;
  ~BitmapSelection() { SelectObject(dc_, previous_); }

 private:
  HDC dc_;
  HGDIOBJ previous_;
};

int SupportedDepth(int bits_per_pixel) {
  return bits_per_pixel == 16 || bits_per_pixel == 24 ? bits_per_pixel : 32;
}

struct ImageFormat {
  std::string_view extension;
  const GUID& format;
};

const ImageFormat kImageFormats[] = {
    {"bmp", Gdiplus::ImageFormatBMP},
    {"png", Gdiplus::ImageFormatPNG},
    {"tif", Gdiplus::ImageFormatTIFF},
};

const GUID* FormatOf(std::string_view file_name) {
  const size_t dot = file_name.rfind('.');
  if (dot == std::string_view::npos) return nullptr;
  const auto found = std::ranges::find(kImageFormats, file_name.substr(dot + 1), &ImageFormat::extension);
  return found != std::end(kImageFormats) ? &found->format : nullptr;
}

/// Starts GDI+ on first use. It is never shut down: that is forbidden while a library is being unloaded, and
/// no other moment is known to be the last.
bool IsGdiPlusStarted() {
  static const bool started = [] {
    // GDI+ runs a thread of its own, which must not outlive its code.
    com::KeepLibraryLoaded();
    ULONG_PTR token = 0;
    const Gdiplus::GdiplusStartupInput input;
    return Gdiplus::GdiplusStartup(&token, &input, nullptr) == Gdiplus::Ok;
  }();
  return started;
}

std::optional<CLSID> EncoderFor(const GUID& format) {
  UINT count = 0;
  UINT bytes = 0;
  if (Gdiplus::GetImageEncodersSize(&count, &bytes) != Gdiplus::Ok || bytes == 0) return std::nullopt;
  std::vector<unsigned char> buffer(bytes);
  auto* const encoders = reinterpret_cast<Gdiplus::ImageCodecInfo*>(buffer.data());
  if (Gdiplus::GetImageEncoders(count, bytes, encoders) != Gdiplus::Ok) return std::nullopt;
  for (UINT i = 0; i < count; ++i) {
    if (encoders[i].FormatID == format) return encoders[i].Clsid;
  }
  return std::nullopt;
}

Gdiplus::PixelFormat PixelFormatOf(const Pixels& pixels) {
  if (pixels.bits_per_pixel() == 16) return PixelFormat16bppRGB555;
  return pixels.bits_per_pixel() == 24 ? PixelFormat24bppRGB : PixelFormat32bppRGB;
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

bool IsImageFileName(const std::string& file_name) { return FormatOf(file_name) != nullptr; }

bool SaveImage(const Pixels& pixels, const std::string& folder, const std::string& file_name) {
  const GUID* const format = FormatOf(file_name);
  if (format == nullptr || !IsGdiPlusStarted()) return false;
  const auto encoder = EncoderFor(*format);
  if (!encoder) return false;
  Gdiplus::Bitmap image(pixels.width(), pixels.height(), pixels.stride(), PixelFormatOf(pixels),
                        pixels.data());
  const std::wstring path = com::FromAnsi(folder + "\\" + file_name);
  return image.Save(path.c_str(), &*encoder, nullptr) == Gdiplus::Ok;
}

}  // namespace quillmate
