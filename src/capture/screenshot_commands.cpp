// The commands that write what is on the screen to a picture file.
#include <string>

#include "api/messages.h"
#include "capture/commands.h"
#include "capture/gdi_handles.h"
#include "capture/image_file.h"
#include "capture/pixels.h"
#include "locate/element_search.h"
#include "locate/frames.h"
#include "locate/geometry.h"
#include "session/current_target.h"

namespace quillmate::capture {
namespace {

using api::CommandParams;
using api::Result;
using locate::Rectangle;
namespace messages = api::messages;

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

Result Outcome(bool saved) { return saved ? api::Done() : api::Fail(messages::kFailedToSaveImage); }

/// Lets the window paint its client area into its own context even when it is covered. A window that hangs is
/// not asked: the call would wait for it.
void PaintInto(HDC dc, HWND window) {
  if (window != nullptr && !IsHungAppWindow(window)) PrintWindow(window, dc, PW_CLIENTONLY);
}

}  // namespace

Result TakeScreenshot(const CommandParams& params) {
  if (!locate::IsTargetUsable()) return api::Fail(messages::kFrameNotFound);
  const session::WindowHolder* holder = session::ValidHolder();
  HWND window = holder != nullptr ? holder->GetWindowHandle() : nullptr;
  const WindowDc source = WindowDc::OfWindow(window);
  PaintInto(source.get(), window);
  // As large as the screen, on purpose, whatever the window's own size.
  const Rectangle screen{0, 0, GetDeviceCaps(source.get(), HORZRES), GetDeviceCaps(source.get(), VERTRES)};
  return Outcome(CaptureRectToFile(source.get(), screen, params));
}

Result TakeElementShot(const CommandParams& params) {
  const auto element = locate::ResolveTargetElement(params);
  if (!element) return element.error();
  const auto rectangle = locate::GetElementRectOrFail(element->Get());
  if (!rectangle) return rectangle.error();
  const WindowDc desktop = WindowDc::OfClientArea(GetDesktopWindow());
  return Outcome(CaptureRectToFile(desktop.get(), *rectangle, params));
}

}  // namespace quillmate::capture
