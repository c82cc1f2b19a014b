#include "session/window_holder.h"

#include <algorithm>
#include <vector>

#include "com/bstr.h"
#include "com/poll.h"
#include "input/send_keys.h"
#include "session/browser_objects.h"
#include "session/start_browser.h"
#include "session/tab_activation.h"
#include "session/windows.h"

namespace quillmate {
namespace {

constexpr std::chrono::seconds kCloseLimit(5);
constexpr int kNewTabRounds = 50;
constexpr std::chrono::milliseconds kNewTabRound(100);

/// The result is ignored: the window has received WM_CLOSE even if it asks the user first or hangs.
void SendClose(HWND window) { SendMessageInTime(window, WM_CLOSE, 0, nullptr, kCloseLimit); }

using Browser = com::ComPtr<IWebBrowser2>;

/// The browsers of the shell's list that belong to one frame.
std::vector<Browser> TabsOfFrame(HWND frame) {
  std::vector<Browser> tabs;
  ForEachShellBrowser([&](Browser browser) {
    if (GetFrameWindow(browser.Get()) == frame) tabs.push_back(std::move(browser));
    return false;
  });
  return tabs;
}

std::unique_ptr<WindowHolder> MakeHolder(const Browser& tab) {
  return std::make_unique<TabBrowserHolder>(tab);
}
std::unique_ptr<WindowHolder> MakeHolder(HWND tab) { return std::make_unique<IeBasedTabHolder>(tab); }

bool IsSameTab(const Browser& a, const Browser& b) { return com::IsSameObject(a.Get(), b.Get()); }
bool IsSameTab(HWND a, HWND b) { return a == b; }

/// Sends a browser to a new tab and looks again until a tab is there that was not before, and has its page.
/// @param list returns the tabs as they are now.
template <class List>
std::unique_ptr<WindowHolder> OpenAndFind(IWebBrowser2* browser, std::string_view url, List list) {
  const auto before = list();
  if (!NavigateBrowser(browser, url, OpenIn::kNewTab)) return {};
  std::unique_ptr<WindowHolder> opened;
  const auto find_new_tab = [&] {
    for (const auto& tab : list()) {
      if (std::ranges::any_of(before, [&](const auto& old) { return IsSameTab(old, tab); })) continue;
      opened = MakeHolder(tab);
      if (opened->IsValid()) return true;
    }
    return false;
  };
  return com::PollUntil(kNewTabRounds, kNewTabRound, find_new_tab) ? std::move(opened) : nullptr;
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

HWND TabBrowserHolder::GetWindowHandle() const { return GetFrameWindow(Reachable()); }

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
  SendKeySequence("{CTRL}{ALT}{F4}");
  return true;
}

bool TabBrowserHolder::Navigate(std::string_view url) {
  return NavigateBrowser(browser_.Get(), url, OpenIn::kSameTab);
}

std::unique_ptr<WindowHolder> TabBrowserHolder::OpenTab(std::string_view url) {
  HWND frame = GetWindowHandle();
  return OpenAndFind(browser_.Get(), url, [=] { return TabsOfFrame(frame); });
}

bool IeBasedTabHolder::BringToTop() { return ActivateHostedTab(browser(), tab_window_); }
bool IeBasedTabHolder::CloseTab() { return BringToTop() && SendKeySequence("{CTRL}W"); }

bool IeBasedTabHolder::CloseWindow() {
  HWND frame = FindAncestorOfClass(tab_window_, L"Chrome_WidgetWin_1");
  if (frame == nullptr) return false;
  SendClose(frame);
  return true;
}

std::unique_ptr<WindowHolder> IeBasedTabHolder::OpenTab(std::string_view url) {
  HWND frame = FindAncestorOfClass(tab_window_, L"Chrome_WidgetWin_1");
  return OpenAndFind(browser(), url, [=] { return ChildrenOfClass(frame, L"AtlAxWin100"); });
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

}  // namespace quillmate
