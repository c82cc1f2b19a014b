// One interface to the three kinds of browser surface, so that commands need not know which one is selected.
#pragma once

#include <windows.h>
#include <exdisp.h>
#include <mshtml.h>
#include <memory>
#include <string_view>

#include "com/com_ptr.h"

namespace quillmate {

/// A browser surface: a tab or a dialog. The base class is a surface that is not there and answers so. A
/// holder never changes after construction; when its browser has gone, its operations fail through their
/// calls.
class WindowHolder {
 public:
  WindowHolder() = default;
  WindowHolder(const WindowHolder&) = delete;
  WindowHolder& operator=(const WindowHolder&) = delete;
  virtual ~WindowHolder() = default;

  /// @return the top document of the surface, null when it cannot be had.
  virtual com::ComPtr<IHTMLDocument2> GetDocument() const { return {}; }
  /// Whether there is a browser or a document to talk to; makes no call to the browser.
  virtual bool IsValid() const { return false; }
  /// @return the window that stands for the surface (the frame of a tab, the hosted tab's own window, the
  /// dialog).
  virtual HWND GetWindowHandle() const { return nullptr; }
  virtual bool IsBusy() const { return false; }
  /// Makes the surface the visible one of its frame, and the frame the foreground window (maximised).
  virtual bool BringToTop() { return false; }
  virtual bool GoForward() { return false; }
  virtual bool GoBack() { return false; }
  virtual bool Refresh() { return false; }
  virtual bool CloseTab() { return false; }
  /// Presses the chord that closes the other tabs of the frame.
  virtual bool CloseByKeys() { return false; }
  /// Asks the window to close and reports success even when there is none: the caller has checked IsValid.
  virtual bool CloseWindow();
  /// Whether the surface is a tab, which can be sent to other addresses.
  virtual bool IsTab() const { return false; }
  /// Sends the tab to an address; loading goes on afterwards.
  /// @param url in the ANSI code page.
  /// @return whether the browser took the order.
  virtual bool Navigate(std::string_view) { return false; }
  /// Opens an address in a new tab of the same frame and finds that tab: the browser object in hand stays
  /// with the old one.
  /// @param url in the ANSI code page.
  /// @return the new tab; null when the browser refused, or showed no new tab within five seconds.
  virtual std::unique_ptr<WindowHolder> OpenTab(std::string_view) { return {}; }

  /// @return the surface's COM object, used to tell whether two holders refer to the same surface; null when
  /// there is none.
  virtual IUnknown* Surface() const { return nullptr; }

  /// Whether the surface's thread takes messages, so that a call to it will come back: one message there and
  /// back. A window that is gone counts as answering, for calls to what was behind it fail at once.
  bool Answers() const;

 protected:
  /// @param answering the window whose thread answers for the surface; null when it is not known.
  explicit WindowHolder(HWND answering) : answering_(answering) {}

 private:
  HWND answering_ = nullptr;
};

/// A tab of an "IEFrame" frame.
class TabBrowserHolder : public WindowHolder {
 public:
  /// The browser of the first page under a window; invalid when there is none.
  explicit TabBrowserHolder(HWND window);
  /// A browser in hand; invalid when it is null.
  explicit TabBrowserHolder(com::ComPtr<IWebBrowser2> browser);

  com::ComPtr<IHTMLDocument2> GetDocument() const override;
  bool IsValid() const override { return browser_ != nullptr; }
  HWND GetWindowHandle() const override;
  bool IsBusy() const override;
  bool BringToTop() override;
  bool GoForward() override;
  bool GoBack() override;
  bool Refresh() override;
  bool CloseTab() override;
  bool CloseByKeys() override;
  bool IsTab() const override { return true; }
  bool Navigate(std::string_view url) override;
  std::unique_ptr<WindowHolder> OpenTab(std::string_view url) override;
  IUnknown* Surface() const override { return browser_.Get(); }

 protected:
  /// @return the browser object; null in an invalid holder.
  IWebBrowser2* browser() const { return browser_.Get(); }

 private:
  /// @return the browser, null when there is none or it does not answer.
  IWebBrowser2* Reachable() const { return browser_ != nullptr && Answers() ? browser_.Get() : nullptr; }

  com::ComPtr<IWebBrowser2> browser_;
};

/// A tab of a "Chrome_WidgetWin_1" frame that hosts the Internet Explorer engine.
class IeBasedTabHolder : public TabBrowserHolder {
 public:
  explicit IeBasedTabHolder(HWND tab_window) : TabBrowserHolder(tab_window), tab_window_(tab_window) {}

  HWND GetWindowHandle() const override { return tab_window_; }
  bool BringToTop() override;
  bool CloseTab() override;
  bool CloseWindow() override;
  std::unique_ptr<WindowHolder> OpenTab(std::string_view url) override;

 private:
  HWND tab_window_;
};

/// A modal HTML dialog, which has a document but no browser object.
class ModalDialogHolder : public WindowHolder {
 public:
  explicit ModalDialogHolder(HWND window);

  com::ComPtr<IHTMLDocument2> GetDocument() const override;
  bool IsValid() const override { return document_ != nullptr; }
  HWND GetWindowHandle() const override { return dialog_window_; }
  bool IsBusy() const override;
  bool BringToTop() override;
  bool CloseTab() override { return CloseWindow(); }
  IUnknown* Surface() const override { return document_.Get(); }

 private:
  com::ComPtr<IHTMLDocument2> document_;
  HWND dialog_window_;
};

}  // namespace quillmate
