#include "session/window_holder.h"

#include <algorithm>
#include <functional>

#include "com/owned.h"
#include "com/process.h"
#include "input/synthesized_input.h"
#include "session/browser_objects.h"
#include "session/start_browser.h"
#include "session/tab_activation.h"
#include "session/windows.h"

namespace quillmate {
namespace {

constexpr std::chrono::seconds kCloseLimit(5);
/// How long a call to the browser may take, and therefore a busy page too.
constexpr std::chrono::seconds kPatience(5);
constexpr int kNewTabRounds = 50;
constexpr std::chrono::milliseconds kNewTabRound(100);
constexpr wchar_t kIeTab[] = L"Frame Tab";
constexpr wchar_t kHostedTab[] = L"AtlAxWin100";

/// The result is ignored: a window that asks the user first has received the message. One that hangs gets it
/// once more, to find when it takes messages again.
void SendClose(HWND window) {
  if (window == nullptr) return;
  if (!SendMessageInTime(window, WM_CLOSE, 0, nullptr, kCloseLimit)) PostMessageW(window, WM_CLOSE, 0, 0);
}

HWND RootOf(HWND window) { return window != nullptr ? GetAncestor(window, GA_ROOT) : nullptr; }

/// The window of a tab that lives as long as the tab.
HWND TabAround(HWND window) {
  if (HWND tab = FindAncestorOfClass(window, kIeTab)) return tab;
  if (HWND tab = FindAncestorOfClass(window, kHostedTab)) return tab;
  return window;
}

/// The window that is asked whether the page behind a surface answers. A tab gets another page window when
/// its page moves to another process.
HWND AskedWindow(HWND surface) {
  HWND page = FindPageWindow(surface);
  return page != nullptr ? page : surface;
}

com::MayRelease MayReleaseOf(HWND surface) {
  if (surface == nullptr) return {};
  return [surface] { return AskWindow(AskedWindow(surface)) != Response::kSilent; };
}

/// Whether a call failed because its object's process is gone or no longer has the object.
bool IsDisconnected(HRESULT result) {
  return result == RPC_E_DISCONNECTED || result == CO_E_OBJNOTCONNECTED || result == RPC_E_SERVER_DIED ||
         result == RPC_E_SERVER_DIED_DNE || result == HRESULT_FROM_WIN32(RPC_S_SERVER_UNAVAILABLE) ||
         result == HRESULT_FROM_WIN32(RPC_S_CALL_FAILED) ||
         result == HRESULT_FROM_WIN32(RPC_S_CALL_FAILED_DNE);
}

/// Sends a browser to a new tab and waits until the frame has a tab that was not there before, with a page.
/// Windows are compared, for a browser that does not answer now would look new when it answers later.
template <class Holder>
std::unique_ptr<WindowHolder> OpenTabIn(HWND frame, const wchar_t* tab_class, IWebBrowser2* browser,
                                        std::string_view url) {
  const auto before = ChildrenOfClass(frame, tab_class);
  if (FAILED(NavigateBrowser(browser, url, OpenIn::kNewTab))) return {};
  std::unique_ptr<WindowHolder> opened;
  const auto find_new_tab = [&] {
    for (HWND tab : ChildrenOfClass(frame, tab_class)) {
      if (std::ranges::find(before, tab) != before.end()) continue;
      opened = std::make_unique<Holder>(tab);
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

Response WindowHolder::Ask(std::chrono::milliseconds limit) const {
  if (surface_ == nullptr) return Response::kAnswers;
  const Response response = AskWindow(AskedWindow(surface_), limit);
  was_silent_ = response == Response::kSilent;
  return response;
}

void WindowHolder::WaitPatiently() { patience_ = kPatience; }

TabBrowserHolder::TabBrowserHolder(HWND window)
    : WindowHolder(TabAround(FindPageWindow(window))),
      browser_(GetWebBrowserFromWindow(window), MayReleaseOf(surface())) {}

TabBrowserHolder::TabBrowserHolder(com::ComPtr<IWebBrowser2> browser)
    : WindowHolder(TabAround(GetTabWindow(browser.Get()))),
      browser_(std::move(browser), MayReleaseOf(surface())) {}

IWebBrowser2* TabBrowserHolder::Reachable() const {
  return IsValid() && Answers() ? browser_.Get() : nullptr;
}

bool TabBrowserHolder::FindBrowserAgain() const {
  auto browser = GetWebBrowserFromWindow(surface());
  if (browser == nullptr) return false;
  browser_ = com::Agile<IWebBrowser2>(std::move(browser), MayReleaseOf(surface()));
  return true;
}

template <class Call>
HRESULT TabBrowserHolder::CallBrowser(Call call) const {
  if (!IsValid() || !Answers()) return RPC_E_CALL_REJECTED;
  IWebBrowser2* browser = browser_.Get();
  const HRESULT result = browser != nullptr ? call(browser) : RPC_E_DISCONNECTED;
  if (!IsDisconnected(result) || !FindBrowserAgain()) return result;
  return call(browser_.Get());
}

com::ComPtr<IHTMLDocument2> TabBrowserHolder::GetDocument() const {
  com::ComPtr<IDispatch> document;
  if (FAILED(CallBrowser([&](IWebBrowser2* browser) { return browser->get_Document(&document); }))) return {};
  return com::Query<IHTMLDocument2>(document);
}

HWND TabBrowserHolder::GetWindowHandle() const {
  HWND frame = RootOf(surface());
  return frame != nullptr ? frame : GetFrameWindow(Reachable());
}

bool TabBrowserHolder::IsBusy() const {
  VARIANT_BOOL busy = VARIANT_FALSE;
  return SUCCEEDED(CallBrowser([&](IWebBrowser2* browser) { return browser->get_Busy(&busy); })) &&
         busy != VARIANT_FALSE;
}

LoadState TabBrowserHolder::GetLoadState() const {
  if (!Answers() || IsBusy()) return LoadState::kBusy;
  READYSTATE state = READYSTATE_COMPLETE;
  CallBrowser([&](IWebBrowser2* browser) { return browser->get_ReadyState(&state); });
  return state == READYSTATE_COMPLETE ? LoadState::kComplete : LoadState::kStarting;
}

bool TabBrowserHolder::BringToTop() { return ActivateIeTab(Reachable()); }

bool TabBrowserHolder::GoForward() { return SUCCEEDED(CallBrowser(std::mem_fn(&IWebBrowser2::GoForward))); }

bool TabBrowserHolder::GoBack() { return SUCCEEDED(CallBrowser(std::mem_fn(&IWebBrowser2::GoBack))); }

bool TabBrowserHolder::Refresh() { return SUCCEEDED(CallBrowser(std::mem_fn(&IWebBrowser2::Refresh))); }

bool TabBrowserHolder::CloseFrameOfLastTab(const wchar_t* tab_class) {
  HWND frame = RootOf(surface());
  if (frame == nullptr || ChildrenOfClass(frame, tab_class).size() != 1) return false;
  SendClose(frame);
  return true;
}

bool TabBrowserHolder::CloseTab() {
  if (SUCCEEDED(CallBrowser(std::mem_fn(&IWebBrowser2::Quit)))) return true;
  return WasSilent() && CloseFrameOfLastTab(kIeTab);
}

bool TabBrowserHolder::CloseByKeys() {
  if (!BringToTop()) return false;
  SendKeySequence("{CTRL}{ALT}{F4}");
  return true;
}

bool TabBrowserHolder::Navigate(std::string_view url) {
  return SUCCEEDED(
      CallBrowser([&](IWebBrowser2* browser) { return NavigateBrowser(browser, url, OpenIn::kSameTab); }));
}

std::unique_ptr<WindowHolder> TabBrowserHolder::OpenTab(std::string_view url) {
  return OpenTabIn<TabBrowserHolder>(GetWindowHandle(), kIeTab, Reachable(), url);
}

bool IeBasedTabHolder::BringToTop() { return ActivateHostedTab(Reachable(), tab_window_); }

bool IeBasedTabHolder::CloseTab() {
  if (BringToTop()) return SendKeySequence("{CTRL}W");
  return WasSilent() && CloseFrameOfLastTab(kHostedTab);
}

bool IeBasedTabHolder::CloseWindow() {
  HWND frame = FindAncestorOfClass(tab_window_, L"Chrome_WidgetWin_1");
  if (frame == nullptr) return false;
  SendClose(frame);
  return true;
}

std::unique_ptr<WindowHolder> IeBasedTabHolder::OpenTab(std::string_view url) {
  HWND frame = FindAncestorOfClass(tab_window_, L"Chrome_WidgetWin_1");
  return OpenTabIn<IeBasedTabHolder>(frame, kHostedTab, Reachable(), url);
}

ModalDialogHolder::ModalDialogHolder(HWND window)
    : WindowHolder(RootOf(FindPageWindow(window))),
      document_(GetDocumentFromWindow(window), MayReleaseOf(surface())),
      dialog_window_(!document_.IsNull() ? window : nullptr) {}

com::ComPtr<IHTMLDocument2> ModalDialogHolder::GetDocument() const {
  return Answers() ? com::ComPtr<IHTMLDocument2>(document_.Get()) : com::ComPtr<IHTMLDocument2>();
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
