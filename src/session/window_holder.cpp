// The holders' operations over IWebBrowser2, documents and windows.
#include "session/window_holder.h"

#include "com/bstr.h"
#include "input/send_keys.h"
#include "session/bring_to_front.h"
#include "session/html_window.h"
#include "session/tab_activation.h"

namespace quillmate::session {
namespace {

constexpr UINT kCloseTimeoutMs = 5000;

/// A window that asks the user before it closes, or hangs, has had its message all the same.
void SendClose(HWND window) {
  SendMessageTimeoutW(window, WM_CLOSE, 0, 0, SMTO_ABORTIFHUNG, kCloseTimeoutMs, nullptr);
}

}  // namespace

bool WindowHolder::CloseWindow() {
  SendClose(GetWindowHandle());
  return true;
}

TabBrowserHolder::TabBrowserHolder(HWND window) : browser_(GetWebBrowserFromWindow(window)) {}

com::ComPtr<IHTMLDocument2> TabBrowserHolder::GetDocument() const {
  com::ComPtr<IDispatch> document;
  if (browser_ == nullptr || FAILED(browser_->get_Document(&document))) return {};
  return com::Query<IHTMLDocument2>(document);
}

HWND TabBrowserHolder::GetWindowHandle() const {
  SHANDLE_PTR handle = 0;
  if (browser_ == nullptr || FAILED(browser_->get_HWND(&handle))) return nullptr;
  return reinterpret_cast<HWND>(handle);
}

bool TabBrowserHolder::IsBusy() const {
  VARIANT_BOOL busy = VARIANT_FALSE;
  return browser_ != nullptr && SUCCEEDED(browser_->get_Busy(&busy)) && busy != VARIANT_FALSE;
}

bool TabBrowserHolder::BringToTop() { return ActivateIeTab(browser_.Get()); }
bool TabBrowserHolder::GoForward() { return browser_ != nullptr && SUCCEEDED(browser_->GoForward()); }
bool TabBrowserHolder::GoBack() { return browser_ != nullptr && SUCCEEDED(browser_->GoBack()); }
bool TabBrowserHolder::Refresh() { return browser_ != nullptr && SUCCEEDED(browser_->Refresh()); }
bool TabBrowserHolder::CloseTab() { return browser_ != nullptr && SUCCEEDED(browser_->Quit()); }

bool TabBrowserHolder::CloseByKeys() {
  if (browser_ == nullptr || !BringToTop()) return false;
  input::SendKeySequence("{CTRL}{ALT}{F4}");
  return true;
}

bool IeBasedTabHolder::BringToTop() { return ActivateHostedTab(Browser(), tab_window_); }
bool IeBasedTabHolder::CloseTab() { return BringToTop() && input::SendKeySequence("{CTRL}W"); }

bool IeBasedTabHolder::CloseWindow() {
  HWND frame = FindAncestorOfClass(tab_window_, L"Chrome_WidgetWin_1");
  if (frame == nullptr) return false;
  SendClose(frame);
  return true;
}

ModalDialogHolder::ModalDialogHolder(HWND window)
    : document_(GetDocumentFromWindow(window)), dialog_window_(document_ != nullptr ? window : nullptr) {}

bool ModalDialogHolder::IsBusy() const {
  com::Bstr state;
  return document_ != nullptr &&
         (FAILED(document_->get_readyState(state.put())) || state.view() != L"complete");
}

bool ModalDialogHolder::BringToTop() {
  if (dialog_window_ == nullptr) return false;
  BringWindowToFront(dialog_window_);
  return true;
}

}  // namespace quillmate::session
