#include "shell/navigation_bar.h"

#include <oleacc.h>
#include <windowsx.h>
#include <algorithm>

#include "shell/frame.h"
#include "shell/tab.h"
#include "shell/tab_strip_accessible.h"

namespace testbrowser::shell {
namespace {

constexpr int kTabWidth = 200;
constexpr int kButtonWidth = 30;

void PaintItem(HDC target, RECT place, const std::wstring& text, bool pressed) {
  FillRect(target, &place, GetSysColorBrush(pressed ? COLOR_WINDOW : COLOR_BTNFACE));
  FrameRect(target, &place, GetSysColorBrush(COLOR_BTNSHADOW));
  InflateRect(&place, -6, -2);
  SetBkMode(target, TRANSPARENT);
  DrawTextW(target, text.c_str(), -1, &place, DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX);
}

}  // namespace

TabStrip::TabStrip(HWND parent, Frame& frame) : frame_(frame) {
  Create({.class_name = L"DirectUIHWND", .style = WS_CHILD | WS_VISIBLE, .parent = parent});
}

RECT TabStrip::ItemPlace(std::size_t index) const {
  const RECT client = ClientRect(hwnd());
  const int tabs = static_cast<int>(std::max<std::size_t>(frame_.tabs().size(), 1));
  const int width = std::min(kTabWidth, (static_cast<int>(client.right) - kButtonWidth) / tabs);
  const int left = static_cast<int>(index) * width;
  const bool is_button = index >= frame_.tabs().size();
  return {left, 0, left + (is_button ? kButtonWidth : width), client.bottom};
}

LRESULT TabStrip::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_GETOBJECT:
      if (static_cast<LONG>(lparam) == OBJID_CLIENT) {
        const auto root = MakeTabStripAccessible(frame_, *this);
        return LresultFromObject(__uuidof(IAccessible), wparam, root.Get());
      }
      break;
    case WM_PAINT:
      Paint();
      return 0;
    case WM_LBUTTONDOWN:
      OnClick({GET_X_LPARAM(lparam), GET_Y_LPARAM(lparam)});
      return 0;
    default:
      break;
  }
  return Window::OnMessage(message, wparam, lparam);
}

void TabStrip::Paint() {
  PAINTSTRUCT paint{};
  HDC target = BeginPaint(hwnd(), &paint);
  const HGDIOBJ font = SelectObject(target, GetStockObject(DEFAULT_GUI_FONT));
  const auto& tabs = frame_.tabs();
  for (std::size_t i = 0; i < tabs.size(); ++i) {
    PaintItem(target, ItemPlace(i), tabs[i]->Caption(), tabs[i].get() == frame_.active());
  }
  PaintItem(target, ItemPlace(tabs.size()), L"+", false);
  SelectObject(target, font);
  EndPaint(hwnd(), &paint);
}

void TabStrip::OnClick(POINT point) {
  const auto& tabs = frame_.tabs();
  for (std::size_t i = 0; i <= tabs.size(); ++i) {
    const RECT place = ItemPlace(i);
    if (PtInRect(&place, point) == 0) continue;
    if (i == tabs.size()) {
      frame_.AddBlankTab();
    } else {
      frame_.Activate(*tabs[i]);
    }
    return;
  }
}

NavigationBar::NavigationBar(Frame& frame)
    : outer_(L"WorkerW", frame.hwnd(), L"Navigation Bar"),
      rebar_(L"ReBarWindow32", outer_.hwnd()),
      band_(L"TabBandClass", rebar_.hwnd()),
      strip_(band_.hwnd(), frame) {}

void NavigationBar::Refresh() { InvalidateRect(strip_.hwnd(), nullptr, TRUE); }

}  // namespace testbrowser::shell
