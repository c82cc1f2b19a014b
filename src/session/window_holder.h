// One interface to the three kinds of browser surface, so that commands need not know which one is selected.
#pragma once

#include <windows.h>
#include <exdisp.h>
#include <mshtml.h>
#include <chrono>
#include <memory>
#include <string_view>

#include "com/agile.h"
#include "com/owned.h"
#include "session/windows.h"

namespace quillmate {

/// How far a tab's page is.
enum class LoadState { kComplete, kStarting, kBusy };

/// A browser surface: a tab or a dialog. The base class is a surface that is not there and says so. When the
/// browser has gone, the operations fail through their calls.
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
  /// @return where a navigation is. A browser that was just told to navigate is not busy yet.
  virtual LoadState GetLoadState() const { return LoadState::kComplete; }
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

  /// Asks the surface's thread whether it takes messages, so that a call to it returns.
  /// @return kAnswers also when the window behind the surface is not known.
  Response Ask(std::chrono::milliseconds limit) const;
  Response Ask() const { return Ask(patience_); }
  bool Answers() const { return Ask() != Response::kSilent; }
  /// Whether the last time that the surface was asked it did not answer: what could not be read then may be
  /// there all the same.
  bool WasSilent() const { return was_silent_; }
  /// From now on waits for a busy page as long as a call may take. At first a page is given the short time
  /// of a search over many.
  void WaitPatiently();

  /// Whether two holders have the same surface, as far as its window tells.
  bool IsSameSurface(const WindowHolder& other) const {
    return surface_ != nullptr && surface_ == other.surface_;
  }
  bool IsWindowGone() const { return surface_ != nullptr && !IsWindow(surface_); }

 protected:
  /// @param surface the outermost window that is the surface's alone; null when it is not known. It outlives
  /// the page's window, which changes with the page's process and kind.
  explicit WindowHolder(HWND surface) : surface_(surface) {}
  HWND surface() const { return surface_; }

 private:
  HWND surface_ = nullptr;
  std::chrono::milliseconds patience_ = kMessageLimit;
  mutable bool was_silent_ = false;
};

/// A tab of an "IEFrame" frame.
class TabBrowserHolder : public WindowHolder {
 public:
  /// The browser of the first page under a window; invalid when there is none.
  explicit TabBrowserHolder(HWND window);
  /// A browser in hand; invalid when it is null.
  explicit TabBrowserHolder(com::ComPtr<IWebBrowser2> browser);

  com::ComPtr<IHTMLDocument2> GetDocument() const override;
  bool IsValid() const override { return !browser_.IsNull(); }
  HWND GetWindowHandle() const override;
  bool IsBusy() const override;
  LoadState GetLoadState() const override;
  bool BringToTop() override;
  bool GoForward() override;
  bool GoBack() override;
  bool Refresh() override;
  bool CloseTab() override;
  bool CloseByKeys() override;
  bool IsTab() const override { return true; }
  bool Navigate(std::string_view url) override;
  std::unique_ptr<WindowHolder> OpenTab(std::string_view url) override;

 protected:
  /// @return the browser; null when there is none or it does not answer.
  IWebBrowser2* Reachable() const;
  /// Closes the whole frame when the surface is its only tab. For a page that does not answer.
  bool CloseFrameOfLastTab(const wchar_t* tab_class);

 private:
  /// Makes a call to the browser, and makes it again when the browser object is gone but the tab is not: a
  /// page that moves to another process gets another browser object.
  template <class Call>
  HRESULT CallBrowser(Call call) const;
  bool FindBrowserAgain() const;

  mutable com::Agile<IWebBrowser2> browser_;
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
  bool IsValid() const override { return !document_.IsNull(); }
  HWND GetWindowHandle() const override { return dialog_window_; }
  bool IsBusy() const override;
  bool BringToTop() override;
  bool CloseTab() override { return CloseWindow(); }

 private:
  com::Agile<IHTMLDocument2> document_;
  HWND dialog_window_;
};

}  // namespace quillmate
