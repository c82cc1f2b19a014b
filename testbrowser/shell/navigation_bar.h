// The frame's bar with its tab strip: WorkerW "Navigation Bar", ReBarWindow32, TabBandClass, DirectUIHWND.
#pragma once

#include <memory>
#include <vector>

#include "shell/window.h"

namespace testbrowser::shell {

class Frame;

/// The strip itself: paints the tabs and a New Tab button, switches by click, and answers WM_GETOBJECT.
class TabStrip : public Window {
 public:
  TabStrip(HWND parent, Frame& frame);
  /// Client pixels; `index` may be one past the last tab: the New Tab button.
  RECT ItemPlace(std::size_t index) const;

 protected:
  LRESULT OnMessage(UINT message, WPARAM wparam, LPARAM lparam) override;

 private:
  void Paint();
  void OnClick(POINT point);
  Frame& frame_;
};

class NavigationBar {
 public:
  static constexpr int kHeight = 30;
  explicit NavigationBar(Frame& frame);
  void MoveTo(const RECT& place) { outer_.MoveTo(place); }
  void Refresh();

 private:
  NestingWindow outer_;
  NestingWindow rebar_;
  NestingWindow band_;
  TabStrip strip_;
};

}  // namespace testbrowser::shell
