// Owners for what GDI hands out.
#pragma once

#include <windows.h>
#include <memory>
#include <type_traits>

namespace quillmate::capture {

/// A window's or the screen's device context, given back when it goes out of scope.
class WindowDc {
 public:
  /// The client area's; of the whole screen for no window.
  static WindowDc OfClientArea(HWND window) { return {window, GetDC(window)}; }
  /// The whole window's, frame and title included; of the whole screen for no window.
  static WindowDc OfWindow(HWND window) { return {window, GetWindowDC(window)}; }
  WindowDc(const WindowDc&) = delete;
  WindowDc& operator=(const WindowDc&) = delete;
  ~WindowDc() {
    if (dc_ != nullptr) ReleaseDC(window_, dc_);
  }

  /// Null when the system gave none.
  HDC get() const { return dc_; }

 private:
  WindowDc(HWND window, HDC dc) : window_(window), dc_(dc) {}

  HWND window_;
  HDC dc_;
};

struct DcDeleter {
  void operator()(HDC dc) const { DeleteDC(dc); }
};
/// A device context of our own making.
using UniqueDc = std::unique_ptr<std::remove_pointer_t<HDC>, DcDeleter>;

struct BitmapDeleter {
  void operator()(HBITMAP bitmap) const { DeleteObject(bitmap); }
};
using UniqueBitmap = std::unique_ptr<std::remove_pointer_t<HBITMAP>, BitmapDeleter>;

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

}  // namespace quillmate::capture
