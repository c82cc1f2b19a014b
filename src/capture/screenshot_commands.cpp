// The commands that write what is on the screen to a picture file.
#include <chrono>
#include <string>

#include "api/messages.h"
#include "capture/picture.h"
#include "com/worker.h"
#include "commands.h"
#include "locate/current_page.h"
#include "locate/geometry.h"

namespace quillmate {
namespace {

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

/// On a scaled display the coordinates of a process that is not aware of it are smaller than the device's
/// pixels.
double DisplayScale() {
  const WindowDc screen = WindowDc::OfClientArea(nullptr);
  return static_cast<double>(GetDeviceCaps(screen.get(), DESKTOPHORZRES)) / GetSystemMetrics(SM_CXSCREEN);
}

/// The horizontal factor serves both axes.
Rectangle Scaled(const Rectangle& rectangle, double factor) {
  const auto scale = [factor](int value) { return static_cast<int>(value * factor); };
  return {scale(rectangle.left), scale(rectangle.top), scale(rectangle.right), scale(rectangle.bottom)};
}

/// Copies a rectangle, in logical pixels of the source, into the file that the parameters name.
bool CaptureRectToFile(HDC source, const Rectangle& rectangle, const CommandParams& params) {
  const std::string file_name = params.Get("file-name");
  if (source == nullptr || !IsImageFileName(file_name)) return false;
  const Rectangle device = Scaled(rectangle, DisplayScale());
  auto pixels = Pixels::Create(device.right - device.left, device.bottom - device.top,
                               GetDeviceCaps(source, BITSPIXEL));
  return pixels && pixels->CopyFrom(source, device.left, device.top) &&
         SaveImage(*pixels, params.Get("save-path"), file_name);
}

Result Outcome(bool saved) { return saved ? Done() : Fail(messages::kFailedToSaveImage); }

/// Lets the window paint its client area even when it is covered. The window's own thread paints, which may
/// hang, so another thread waits for it; what the window shows on the screen is then taken as it is.
void Repaint(HWND window) {
  constexpr std::chrono::seconds kPaintLimit(5);
  if (window == nullptr || IsHungAppWindow(window)) return;
  com::RunInTime(
      [window] {
        const WindowDc dc = WindowDc::OfWindow(window);
        PrintWindow(window, dc.get(), PW_CLIENTONLY);
      },
      kPaintLimit);
}

}  // namespace

Result TakeScreenshot(Session& session, const CommandParams& params) {
  if (!IsTargetUsable(session)) return Fail(messages::kFrameNotFound);
  const WindowHolder* holder = session.ValidHolder();
  // A hosted tab's own window is a child of the one on the screen.
  HWND window = holder != nullptr ? GetAncestor(holder->GetWindowHandle(), GA_ROOT) : nullptr;
  Repaint(window);
  const WindowDc source = WindowDc::OfWindow(window);
  // Deliberate: as large as the screen, whatever the window's own size.
  const Rectangle screen{0, 0, GetDeviceCaps(source.get(), HORZRES), GetDeviceCaps(source.get(), VERTRES)};
  return Outcome(CaptureRectToFile(source.get(), screen, params));
}

Result TakeElementShot(Session& session, const CommandParams& params) {
  const auto element = ResolveTargetElement(session, params);
  if (!element) return element.error();
  const auto rectangle = GetElementRectOrFail(session, element->Get());
  if (!rectangle) return rectangle.error();
  const WindowDc desktop = WindowDc::OfClientArea(GetDesktopWindow());
  return Outcome(CaptureRectToFile(desktop.get(), *rectangle, params));
}

}  // namespace quillmate
