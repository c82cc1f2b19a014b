// The list of a page's SELECT: the page's picture does not hold it, so it is a window of our own.
#pragma once

#include <functional>

#include "engine/page_listener.h"
#include "shell/window.h"

namespace testbrowser::shell {

class DropDownList : public Window {
 public:
  /// @param page_window the window that the list's place is measured in.
  /// @param choose gets the index chosen, or -1, once.
  DropDownList(HWND page_window, const engine::DropDown& list, std::function<void(int)> choose);
  ~DropDownList() override;

  /// Gives the list a key pressed while it is open.
  void OnKey(unsigned virtual_key);
  bool IsOpen() const { return choose_ != nullptr; }

 protected:
  LRESULT OnMessage(UINT message, WPARAM wparam, LPARAM lparam) override;

 private:
  void OnPress(POINT point, WPARAM keys);
  void GiveToPage(UINT message, WPARAM keys, POINT point);
  int ItemAt(POINT point) const;
  void Mark(int index);
  void Step(int direction);
  void Close(int chosen);
  void Paint();

  HWND page_window_;
  engine::DropDown list_;
  std::function<void(int)> choose_;
  int marked_;
};

}  // namespace testbrowser::shell
