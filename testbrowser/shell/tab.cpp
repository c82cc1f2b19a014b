#include "shell/tab.h"

#include <utility>

#include "com/encoding.h"
#include "engine/switches.h"
#include "shell/frame.h"
#include "shell/web_browser.h"

namespace testbrowser::shell {

using quillmate::com::FromUtf8;
using quillmate::com::ToUtf8;

Tab::Tab(Application& application, shell::Frame& frame, std::shared_ptr<engine::Page> page)
    : PageHost(application), frame_(frame) {
  HWND parent = frame.hwnd();
  for (std::size_t i = 0; i < chain_.size(); ++i) {
    const wchar_t* name = frame.kind().tab_chain[i];
    // The outermost is the frame's.
    chain_[i] = i == 0 ? std::make_unique<NestingWindow>(name, parent)
                       : std::make_unique<shell::TabWindow>(name, parent, *page);
    parent = chain_[i]->hwnd();
  }
  browser_ = dom::MakeObject<WebBrowser>(*this);
  Attach(std::move(page), parent);
}

Tab::~Tab() { browser_->Disconnect(); }

HWND Tab::TabWindow() const { return chain_[frame_.kind().tab_window]->hwnd(); }

void Tab::Show(bool active) {
  const bool active_is_first = engine::SwitchText("tab-order", "active-first") == "active-first";
  const bool is_shown = active || engine::SwitchText("inactive-tabs", "hidden") == "shown";
  SetWindowPos(OuterWindow(), active == active_is_first ? HWND_TOP : HWND_BOTTOM, 0, 0, 0, 0,
               SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | (is_shown ? SWP_SHOWWINDOW : SWP_HIDEWINDOW));
  ReportPlace();
}

bool Tab::IsBusy() {
  state_.DropMissing([this](const engine::FrameId& frame) { return page().HasFrame(frame); });
  return state_.busy() || (HasBox() && engine::SwitchText("busy-under-box", "no") == "yes");
}

std::wstring Tab::Address() const {
  return state_.has_document() ? FromUtf8(page().FrameUrl(page().MainFrame())) : L"";
}

std::wstring Tab::Name() const { return title_.empty() ? Address() : title_; }

std::wstring Tab::Caption() const {
  constexpr std::wstring_view kFileScheme = L"file://";
  const std::wstring name = Name();
  if (name.empty()) return L"about:blank";
  const bool is_cut = title_.empty() && name.starts_with(kFileScheme) &&
                      engine::SwitchText("untitled-file", "path") == "path";
  return is_cut ? name.substr(kFileScheme.size()) : name;
}

void Tab::Navigate(const std::wstring& address) {
  state_.Asked();
  page().Navigate(ToUtf8(address));
}

void Tab::Stop() {
  page().Stop();
  state_.Stopped();
}

void Tab::CloseSoon() { frame_.CloseTabSoon(*this); }

void Tab::SwapBrowsers(Tab& other) {
  browser_->Swap(*other.browser_.Get());
  std::swap(browser_, other.browser_);
}

IWebBrowser2* Tab::Browser() { return browser_.Get(); }

TopLevelWindow& Tab::TopLevel() { return frame_; }

bool Tab::OnShortcut(const engine::KeyInput& key) { return frame_.HandleShortcut(key); }

void Tab::OnPageGone() {
  browser_->Disconnect();
  frame_.RemoveTab(*this);
}

void Tab::OnLoadStarted(const engine::FrameId& frame) { state_.Started(frame); }

void Tab::OnNavigated(const engine::FrameId& frame, const std::string&, bool same_document) {
  if (!IsMain(frame)) return;
  if (!same_document) state_.DocumentCame(frame);
  frame_.OnTabChanged(*this);
}

void Tab::OnDocumentReady(const engine::FrameId& frame) {
  if (IsMain(frame)) state_.DocumentParsed();
}

void Tab::OnLoadFinished(const engine::FrameId& frame) { state_.Finished(frame, IsMain(frame)); }

void Tab::OnTitleChanged(const std::string& title) {
  title_ = FromUtf8(title);
  frame_.OnTabChanged(*this);
}

}  // namespace testbrowser::shell
