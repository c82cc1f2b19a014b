// Whoever shows a page, a tab or a modal dialog: the page's window, its message boxes, the modal dialogs and
// drop-down lists that it opens, and the way to its document.
#pragma once

#include <memory>
#include <vector>

#include "dom/document.h"
#include "engine/page.h"
#include "shell/drop_down_list.h"
#include "shell/native_box.h"
#include "shell/server_window.h"
#include "shell/top_level_window.h"

namespace testbrowser::shell {

class Application;

class PageHost : public engine::PageListener, public dom::BrowserSite, public ServerWindow::Owner {
 public:
  explicit PageHost(Application& application) : application_(application) {}
  ~PageHost() override;
  PageHost(const PageHost&) = delete;
  PageHost& operator=(const PageHost&) = delete;

  Application& application() const { return application_; }
  engine::Page& page() const { return *page_; }
  /// The page's container document, the same object for the page's life.
  IHTMLDocument2* Document() const { return document_.Get(); }
  /// Tells the page of a new place or visibility of its window.
  void ReportPlace();
  void FocusPage();
  /// Whether a message box of the page is up.
  bool HasBox() const { return box_ != nullptr; }

  // dom::BrowserSite
  IWebBrowser2* Browser() override { return nullptr; }
  HWND ServerWindow() override { return server_ != nullptr ? server_->hwnd() : nullptr; }

 protected:
  /// Shows the page in a window that fills `parent`.
  void Attach(std::shared_ptr<engine::Page> page, HWND parent);
  /// The window that boxes and dialogs belong to.
  virtual TopLevelWindow& TopLevel() = 0;
  /// The page is gone, and with it this host's purpose.
  virtual void OnPageGone() = 0;

  // ServerWindow::Owner
  LRESULT DocumentResult(WPARAM wparam) override;
  bool HandleShortcut(const engine::KeyInput& key) final;
  /// Carries out a shortcut of the browser; false when the key is the page's.
  virtual bool OnShortcut(const engine::KeyInput&) { return false; }

  // engine::PageListener
  void OnLoadStarted(const engine::FrameId&) override {}
  void OnNavigated(const engine::FrameId&, const std::string&, bool) override {}
  void OnDocumentReady(const engine::FrameId&) override {}
  void OnLoadFinished(const engine::FrameId&) override {}
  void OnNavigationFailed(const engine::FrameId&, const std::string&, const std::string&) override {}
  void OnPicture() override;
  void OnMessageBox(const engine::ScriptBox& box, std::function<void(engine::BoxAnswer)> answer) override;
  void OnMessageBoxGone() override;
  void OnModalDialog(const engine::ModalDialog& dialog) override;
  void OnPopup(std::shared_ptr<engine::Page> page) override;
  void OnDropDown(const engine::DropDown& list, std::function<void(int)> choose) override;
  void OnFileChooser(bool several, std::function<void(std::vector<std::string>)> choose) override;
  void OnClosed(bool crashed) override;

 private:
  Application& application_;
  std::shared_ptr<engine::Page> page_;
  std::unique_ptr<shell::ServerWindow> server_;
  quillmate::com::ComPtr<IHTMLDocument2> document_;
  std::unique_ptr<NativeBox> box_;
  std::unique_ptr<DropDownList> drop_down_;
};

}  // namespace testbrowser::shell
