// The browser process: its engine, its frames and dialogs, and how long it lives.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "engine/engine.h"
#include "shell/shell_kind.h"

namespace testbrowser::shell {

class Frame;
class ModalDialogWindow;
class PageHost;
class Tab;
class TopLevelWindow;

class Application {
 public:
  explicit Application(ShellKind kind);
  ~Application();
  Application(const Application&) = delete;
  Application& operator=(const Application&) = delete;

  /// A new page on about:blank; starts Chromium before the first.
  /// @return null when there is no Chromium; the reason went to the debugger's output.
  std::shared_ptr<engine::Page> OpenPage();
  /// A new frame whose only tab shows the page. @param show ShowWindow's command.
  Tab& OpenFrame(std::shared_ptr<engine::Page> page, int show);
  /// Shows a page that another one opened, in a new tab of the frame behind `opener`.
  void OpenPopup(const TopLevelWindow& opener, std::shared_ptr<engine::Page> page);
  void OpenDialog(TopLevelWindow& opener, const engine::ModalDialog& dialog);

  /// Holds what is closed until nothing of it can be on the stack any more.
  void Retire(std::unique_ptr<PageHost> host);
  void OnFrameGone(const Frame& frame);
  void OnDialogGone(const ModalDialogWindow& dialog);

  /// Whether a switch makes all calls be told now to come again later.
  bool RefusesCalls() const;

  /// Handles messages until the last frame is closed.
  void Run();

 private:
  ShellKind kind_;
  std::unique_ptr<engine::Engine> engine_;
  std::vector<std::shared_ptr<Frame>> frames_;
  std::vector<std::unique_ptr<PageHost>> dialogs_;
  std::vector<std::unique_ptr<PageHost>> retired_hosts_;
  std::vector<std::shared_ptr<Frame>> retired_frames_;
};

}  // namespace testbrowser::shell
