// The holders' operations over IWebBrowser2, documents and windows.
#include "session/window_holder.h"

#include "com/bstr.h"
#include "input/send_keys.h"
#include "session/answering.h"
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

HWND WindowOf(IWebBrowser2* browser) {
  SHANDLE_PTR handle = 0;
  if (browser == nullptr || FAILED(browser->get_HWND(&handle))) return nullptr;
  return reinterpret_cast<HWND>(handle);
}

}  // namespace

bool WindowHolder::CloseWindow() {
  SendClose(GetWindowHandle());
  return true;
}

bool WindowHolder::Answers() const {
  if (answering_ == nullptr || !IsWindow(answering_)) return true;
  // A tab's page may have got another window since.
  HWND page = FindPageWindow(answering_);
  HWND asked = page != nullptr ? page : answering_;
  return AnswersInTime(asked) || !IsWindow(asked);
}

TabBrowserHolder::TabBrowserHolder(HWND window)
    : WindowHolder(FindPageWindow(window)), browser_(GetWebBrowserFromWindow(window)) {}

TabBrowserHolder::TabBrowserHolder(com::ComPtr<IWebBrowser2> browser)
    : WindowHolder(GetTabWindow(browser.Get())), browser_(std::move(browser)) {}

com::ComPtr<IHTMLDocument2> TabBrowserHolder::GetDocument() const {
  IWebBrowser2* browser = Reachable();
  com::ComPtr<IDispatch> document;
  if (browser == nullptr || FAILED(browser->get_Document(&document))) return {};
  return com::Query<IHTMLDocument2>(document);
}

HWND TabBrowserHolder::GetWindowHandle() const { return WindowOf(Reachable()); }

bool TabBrowserHolder::IsBusy() const {
  IWebBrowser2* browser = Reachable();
  VARIANT_BOOL busy = VARIANT_FALSE;
  return browser != nullptr && SUCCEEDED(browser->get_Busy(&busy)) && busy != VARIANT_FALSE;
}

bool TabBrowserHolder::BringToTop() { return ActivateIeTab(Reachable()); }

bool TabBrowserHolder::GoForward() {
  IWebBrowser2* browser = Reachable();
  return browser != nullptr && SUCCEEDED(browser->GoForward());
}

bool TabBrowserHolder::GoBack() {
  IWebBrowser2* browser = Reachable();
  return browser != nullptr && SUCCEEDED(browser->GoBack());
}

bool TabBrowserHolder::Refresh() {
  IWebBrowser2* browser = Reachable();
  return browser != nullptr && SUCCEEDED(browser->Refresh());
}

bool TabBrowserHolder::CloseTab() {
  IWebBrowser2* browser = Reachable();
  return browser != nullptr && SUCCEEDED(browser->Quit());
}

bool TabBrowserHolder::CloseByKeys() {
  if (!BringToTop()) return false;
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
    : WindowHolder(FindPageWindow(window)),
      document_(GetDocumentFromWindow(window)),
      dialog_window_(document_ != nullptr ? window : nullptr) {}

com::ComPtr<IHTMLDocument2> ModalDialogHolder::GetDocument() const {
  return Answers() ? document_ : com::ComPtr<IHTMLDocument2>();
}

bool ModalDialogHolder::IsBusy() const {
  const auto document = GetDocument();
  com::Bstr state;
  return document != nullptr &&
         (FAILED(document->get_readyState(state.put())) || state.view() != L"complete");
}

bool ModalDialogHolder::BringToTop() {
  return dialog_window_ != nullptr && BringWindowToFront(dialog_window_);
}

}  // namespace quillmate::session
