// A top-level browser frame: its tabs, which one is active, its title, and the browser's own shortcuts.
#pragma once

#include <memory>
#include <vector>

#include "engine/input_event.h"
#include "engine/page.h"
#include "shell/shell_kind.h"
#include "shell/top_level_window.h"

namespace testbrowser::shell {

class Application;
class NavigationBar;
class Tab;

class Frame : public TopLevelWindow, public std::enable_shared_from_this<Frame> {
 public:
  Frame(Application& application, ShellKind kind);
  ~Frame() override;

  const ShellKind& kind() const { return kind_; }
  const std::vector<std::unique_ptr<Tab>>& tabs() const { return tabs_; }
  Tab* active() const { return active_; }

  /// Adds a tab that shows the page. The first tab is active in any case.
  Tab& AddTab(std::shared_ptr<engine::Page> page, bool activate);
  /// A new active tab on about:blank; nothing happens when there is no Chromium.
  void AddBlankTab();
  void Activate(Tab& tab);
  void CloseTabSoon(Tab& tab);
  /// Takes a tab out whose page is gone; the frame goes with its last one.
  void RemoveTab(Tab& tab);
  void OnTabChanged(Tab& tab);
  /// Carries out the browser's own shortcuts.
  /// @return false when the key is the page's.
  bool HandleShortcut(const engine::KeyInput& key);

 protected:
  LRESULT OnMessage(UINT message, WPARAM wparam, LPARAM lparam) override;

 private:
  void Layout();
  void ShowTitle();
  /// Tells the shell's collection, which looks at the frame, what the switches say.
  void PublishSwitches();
  void ReportPlaces();
  void Step(int direction);
  void CloseOthers();
  void CloseAll();
  void OnCloseTab(Tab* tab);

  Application& application_;
  ShellKind kind_;
  std::unique_ptr<NavigationBar> bar_;
  std::vector<std::unique_ptr<Tab>> tabs_;
  Tab* active_ = nullptr;
};

}  // namespace testbrowser::shell
