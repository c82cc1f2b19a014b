#include "shell/frame.h"

#include <algorithm>
#include <utility>

#include "engine/switches.h"
#include "shell/application.h"
#include "shell/call_filter.h"
#include "shell/navigation_bar.h"
#include "shell/shell_windows.h"
#include "shell/shortcuts.h"
#include "shell/tab.h"

namespace testbrowser::shell {
namespace {

constexpr UINT kCloseTab = WM_APP;  // wParam: the tab
constexpr UINT kPlaceChanged = WM_APP + 1;

}  // namespace

Frame::Frame(Application& application, ShellKind kind) : application_(application), kind_(std::move(kind)) {
  constexpr RECT kPlace{40, 20, 1064, 788};
  Create({.class_name = kind_.frame_class,
          .text = L"Internet Explorer",
          .style = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
          .place = kPlace});
  if (kind_.has_tab_strip) bar_ = std::make_unique<NavigationBar>(*this);
  PublishSwitches();
  Layout();
}

Frame::~Frame() = default;

Tab& Frame::AddTab(std::shared_ptr<engine::Page> page, bool activate) {
  tabs_.push_back(std::make_unique<Tab>(application_, *this, std::move(page)));
  Tab& tab = *tabs_.back();
  Layout();
  if (activate || active_ == nullptr) {
    Activate(tab);
  } else {
    tab.Show(false);
  }
  OnTabChanged(tab);
  return tab;
}

void Frame::AddBlankTab() {
  if (auto page = application_.OpenPage()) AddTab(std::move(page), true).Navigate(L"about:blank");
}

void Frame::Activate(Tab& tab) {
  Tab* before = std::exchange(active_, &tab);
  tab.Show(true);
  if (before != nullptr && before != &tab) before->Show(false);
  ShowTitle();
  if (bar_ != nullptr) bar_->Refresh();
  if (GetActiveWindow() == hwnd()) tab.FocusPage();
}

void Frame::CloseTabSoon(Tab& tab) { PostMessageW(hwnd(), kCloseTab, reinterpret_cast<WPARAM>(&tab), 0); }

void Frame::RemoveTab(Tab& tab) {
  const auto found = std::ranges::find(tabs_, &tab, &std::unique_ptr<Tab>::get);
  if (found == tabs_.end()) return;
  const auto index = found - tabs_.begin();
  const HWND outer = tab.OuterWindow();
  application_.Retire(std::move(*found));
  tabs_.erase(found);
  if (tabs_.empty()) {
    active_ = nullptr;
    Destroy();
    return;
  }
  if (active_ == &tab) {
    active_ = nullptr;
    Activate(*tabs_[std::min<std::size_t>(static_cast<std::size_t>(index), tabs_.size() - 1)]);
  }
  if (bar_ != nullptr) bar_->Refresh();
  DestroyWindow(outer);
}

void Frame::OnTabChanged(Tab& tab) {
  if (&tab == active_) ShowTitle();
  if (bar_ != nullptr) bar_->Refresh();
}

bool Frame::HandleShortcut(const engine::KeyInput& key) {
  const auto action = ShortcutOf(key);
  if (!action) return false;
  switch (*action) {
    case Shortcut::kNextTab:
      Step(+1);
      break;
    case Shortcut::kPreviousTab:
      Step(-1);
      break;
    case Shortcut::kCloseTab:
      CloseTabSoon(*active_);
      break;
    case Shortcut::kCloseOtherTabs:
      CloseOthers();
      break;
    case Shortcut::kNewTab:
      AddBlankTab();
      break;
    case Shortcut::kRefresh:
      active_->page().Reload();
      break;
    case Shortcut::kBack:
      active_->page().Go(-1);
      break;
    case Shortcut::kForward:
      active_->page().Go(+1);
      break;
  }
  return true;
}

LRESULT Frame::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case kCloseTab:
      OnCloseTab(reinterpret_cast<Tab*>(wparam));
      return 0;
    case kSwitchesChanged:
      PublishSwitches();
      for (const auto& tab : tabs_) tab->Show(tab.get() == active_);
      if (active_ != nullptr) ShowTitle();
      return 0;
    case WM_SIZE:
      Layout();
      break;
    case WM_MOVE:
    case WM_SHOWWINDOW:
      // The message comes before the windows below are shown.
      PostMessageW(hwnd(), kPlaceChanged, 0, 0);
      break;
    case kPlaceChanged:
      ReportPlaces();
      return 0;
    case WM_SETFOCUS:
      if (active_ != nullptr) active_->FocusPage();
      return 0;
    case WM_GETMINMAXINFO:
      TopLevelWindow::OnMessage(message, wparam, lparam);
      // Maximised it begins at the screen's corner, not outside, and nothing of it is cut off.
      reinterpret_cast<MINMAXINFO*>(lparam)->ptMaxPosition = {0, 0};
      reinterpret_cast<MINMAXINFO*>(lparam)->ptMaxSize = {GetSystemMetrics(SM_CXSCREEN),
                                                          GetSystemMetrics(SM_CYSCREEN)};
      return 0;
    case WM_CLOSE:
      CloseAll();
      return 0;
    case WM_DESTROY:
      application_.OnFrameGone(*this);
      break;
    default:
      break;
  }
  return TopLevelWindow::OnMessage(message, wparam, lparam);
}

void Frame::Layout() {
  RECT place = ClientRect(hwnd());
  if (bar_ != nullptr) {
    bar_->MoveTo({place.left, place.top, place.right, NavigationBar::kHeight});
    place.top = NavigationBar::kHeight;
  }
  for (const auto& tab : tabs_) tab->MoveTo(place);
  ReportPlaces();
}

void Frame::ShowTitle() {
  const std::wstring title = active_->Caption() + kind_.title_suffix;
  SetWindowTextW(hwnd(), title.c_str());
}

void Frame::PublishSwitches() {
  const auto publish = [this](const wchar_t* name, int value) {
    SetPropW(hwnd(), name, reinterpret_cast<HANDLE>(static_cast<INT_PTR>(value)));
  };
  publish(kUnlistedProperty, engine::SwitchText("shell-list", "yes") == "no" ? 1 : 0);
  publish(kFoldersProperty, engine::SwitchNumber("shell-folders"));
  publish(kNullsProperty, engine::SwitchNumber("shell-nulls"));
}

void Frame::ReportPlaces() {
  for (const auto& tab : tabs_) tab->ReportPlace();
}

void Frame::Step(int direction) {
  const auto found = std::ranges::find(tabs_, active_, &std::unique_ptr<Tab>::get);
  const auto count = static_cast<int>(tabs_.size());
  const int next = (static_cast<int>(found - tabs_.begin()) + direction + count) % count;
  Activate(*tabs_[static_cast<std::size_t>(next)]);
}

void Frame::CloseOthers() {
  for (const auto& tab : tabs_) {
    if (tab.get() != active_) CloseTabSoon(*tab);
  }
}

void Frame::OnCloseTab(Tab* tab) {
  // It may have gone by itself since it was asked.
  const auto found = std::ranges::find(tabs_, tab, &std::unique_ptr<Tab>::get);
  if (found != tabs_.end()) tab->page().Close();
}

void Frame::CloseAll() {
  // Closing a page removes its tab, and the last one's takes the window with it.
  while (!tabs_.empty()) tabs_.back()->page().Close();
  Destroy();
}

}  // namespace testbrowser::shell
