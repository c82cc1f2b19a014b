// The page as its window sees it: size, pictures, input.
#include "engine/page.h"
#include "engine/page_parts.h"

namespace testbrowser::engine {

void Page::SetViewport(int width, int height, int screen_x, int screen_y) {
  parts_->session.Send("Emulation.setDeviceMetricsOverride",
                       JsonObject()
                           .Add("width", width)
                           .Add("height", height)
                           .Add("deviceScaleFactor", 1)
                           .Add("mobile", false)
                           .Add("positionX", screen_x)
                           .Add("positionY", screen_y)
                           .Add("screenWidth", GetSystemMetrics(SM_CXSCREEN))
                           .Add("screenHeight", GetSystemMetrics(SM_CYSCREEN))
                           .Take());
  // A page that draws nothing new at its new size would send no picture of it.
  parts_->screencast.Renew();
}

void Page::SetPainting(bool wanted) {
  if (wanted) {
    parts_->screencast.Start();
  } else {
    parts_->screencast.Stop();
  }
}

std::shared_ptr<const Picture> Page::LatestPicture() const { return parts_->screencast.Latest(); }

void Page::SetFocus(bool focused) {
  parts_->session.Send("Emulation.setFocusEmulationEnabled", JsonObject().Add("enabled", focused).Take());
}

void Page::Mouse(const MouseInput& input) { parts_->input.Add(input); }
void Page::Wheel(const WheelInput& input) { parts_->input.Add(input); }
void Page::Key(const KeyInput& input) { parts_->input.Add(input); }

}  // namespace testbrowser::engine
