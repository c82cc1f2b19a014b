// The window of a page's showModalDialog: "Internet Explorer_TridentDlgFrame" with the
// "Internet Explorer_Server" as its child. Its opener is disabled while it is open.
#pragma once

#include "shell/page_host.h"
#include "shell/top_level_window.h"

namespace testbrowser::shell {

class ModalDialogWindow : public PageHost {
 public:
  ModalDialogWindow(Application& application, TopLevelWindow& opener, const engine::ModalDialog& dialog);

 protected:
  TopLevelWindow& TopLevel() override { return frame_; }
  void OnTitleChanged(const std::string& title) override;
  void OnPageGone() override;

 private:
  class DialogFrame : public TopLevelWindow {
   public:
    DialogFrame(ModalDialogWindow& dialog, HWND owner, const RECT& place);
    using Window::Destroy;

   protected:
    LRESULT OnMessage(UINT message, WPARAM wparam, LPARAM lparam) override;

   private:
    ModalDialogWindow& dialog_;
  };

  WindowBlock block_;
  DialogFrame frame_;
};

}  // namespace testbrowser::shell
