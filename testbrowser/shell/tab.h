// One tab of a frame: its chain of windows, its page, how far that is loaded, and its browser object.
#pragma once

#include <array>
#include <memory>
#include <string>

#include "shell/load_state.h"
#include "shell/page_host.h"
#include "shell/window.h"

namespace testbrowser::shell {

class Frame;
class WebBrowser;

/// A window of the tab's own thread: it answers nobody while a script of the page runs.
class TabWindow : public NestingWindow {
 public:
  TabWindow(const wchar_t* class_name, HWND parent, engine::Page& page)
      : NestingWindow(class_name, parent), page_(page) {}

 protected:
  LRESULT OnMessage(UINT message, WPARAM wparam, LPARAM lparam) override {
    if (IsQuestion(message)) page_.AwaitScripts();
    return NestingWindow::OnMessage(message, wparam, lparam);
  }

 private:
  engine::Page& page_;
};

class Tab : public PageHost {
 public:
  Tab(Application& application, Frame& frame, std::shared_ptr<engine::Page> page);
  ~Tab() override;

  shell::Frame& Frame() const { return frame_; }
  /// The outermost window of the tab, the frame's child.
  HWND OuterWindow() const { return chain_.front()->hwnd(); }
  /// The window that the browser object names as the tab's own.
  HWND TabWindow() const;
  void MoveTo(const RECT& place) { chain_.front()->MoveTo(place); }
  /// The active tab's chain is visible and stands before its siblings.
  void Show(bool active);

  const LoadState& state() const { return state_; }
  bool IsBusy();
  std::wstring Address() const;
  /// The document's title, or its address when it has none.
  std::wstring Name() const;
  /// What the tab strip and the frame's title show: as Name, a local file's address without its scheme.
  std::wstring Caption() const;

  void Navigate(const std::wstring& address);
  void Stop();
  /// Closes the tab from the message loop, not now: a caller may stand on its page's stack.
  void CloseSoon();
  /// Each tab's browser object becomes the other's.
  void SwapBrowsers(Tab& other);

  IWebBrowser2* Browser() override;

 protected:
  TopLevelWindow& TopLevel() override;
  bool OnShortcut(const engine::KeyInput& key) override;
  void OnPageGone() override;

  void OnLoadStarted(const engine::FrameId& frame) override;
  void OnNavigated(const engine::FrameId& frame, const std::string& url, bool same_document) override;
  void OnDocumentReady(const engine::FrameId& frame) override;
  void OnLoadFinished(const engine::FrameId& frame) override;
  void OnTitleChanged(const std::string& title) override;

 private:
  bool IsMain(const engine::FrameId& frame) const { return frame == page().MainFrame(); }

  shell::Frame& frame_;
  std::array<std::unique_ptr<NestingWindow>, 3> chain_;
  LoadState state_;
  std::wstring title_;
  quillmate::com::ComPtr<WebBrowser> browser_;
};

}  // namespace testbrowser::shell
