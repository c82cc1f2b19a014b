// The "Internet Explorer_Server" window: shows a page's picture, turns its messages into the page's input and
// hands out the page's document.
#pragma once

#include <bitset>
#include <memory>

#include "engine/page.h"
#include "shell/window.h"

namespace testbrowser::shell {

class ServerWindow : public Window {
 public:
  /// What the window needs of whoever shows the page.
  class Owner {
   public:
    virtual ~Owner() = default;
    /// The document, as WM_HTML_GETOBJECT's answer; 0 when there is none.
    virtual LRESULT DocumentResult(WPARAM wparam) = 0;
    /// Whether the press of a key was one of the browser's own shortcuts, carried out and not the page's.
    virtual bool HandleShortcut(const engine::KeyInput& key) = 0;
  };

  ServerWindow(HWND parent, std::shared_ptr<engine::Page> page, Owner& owner);

  /// Tells the page the window's size and where it lies on the screen.
  void ReportPlace();
  /// Shows the page's latest picture.
  void Repaint();

 protected:
  LRESULT OnMessage(UINT message, WPARAM wparam, LPARAM lparam) override;

 private:
  bool OnInput(UINT message, WPARAM wparam, LPARAM lparam);
  void OnMouse(engine::MouseInput input);
  bool OnKey(UINT message, WPARAM wparam, LPARAM lparam);
  void Paint();

  std::shared_ptr<engine::Page> page_;
  Owner& owner_;
  int clicks_of_press_ = 1;
  DWORD mouse_time_ = 0;        ///< of the last mouse message, in the system's running time
  std::bitset<256> kept_keys_;  ///< by virtual key: whether its last press was the browser's
  RECT reported_{};             ///< screen origin in the first two, size in the others
  bool was_shown_ = false;
};

}  // namespace testbrowser::shell
