#include "shell/drop_down_list.h"

#include <windowsx.h>
#include <algorithm>
#include <utility>

#include "com/encoding.h"

namespace testbrowser::shell {
namespace {

constexpr int kItemHeight = 18;

RECT PlaceUnder(HWND page_window, const engine::DropDown& list) {
  POINT corner{list.left, list.bottom};
  ClientToScreen(page_window, &corner);
  const int height = static_cast<int>(list.options.size()) * kItemHeight + 2;
  // No room below: the list opens upwards.
  if (corner.y + height > GetSystemMetrics(SM_CYSCREEN)) {
    corner.y = std::max<LONG>(corner.y - (list.bottom - list.top) - height, 0);
  }
  return {corner.x, corner.y, corner.x + (list.right - list.left), corner.y + height};
}

}  // namespace

DropDownList::DropDownList(HWND page_window, const engine::DropDown& list, std::function<void(int)> choose)
    : page_window_(page_window), list_(list), choose_(std::move(choose)), marked_(list.selected) {
  Create({.class_name = L"Internet Explorer_TridentCmboBx",
          .style = WS_POPUP | WS_BORDER,
          .extended_style = WS_EX_TOOLWINDOW | WS_EX_TOPMOST | WS_EX_NOACTIVATE,
          .parent = GetAncestor(page_window, GA_ROOT),
          .place = PlaceUnder(page_window, list)});
  ShowWindow(hwnd(), SW_SHOWNOACTIVATE);
  SetCapture(hwnd());  // a click elsewhere closes the list
}

DropDownList::~DropDownList() { Close(-1); }

void DropDownList::OnKey(unsigned virtual_key) {
  switch (virtual_key) {
    case VK_UP:
      Step(-1);
      break;
    case VK_DOWN:
      Step(+1);
      break;
    case VK_RETURN:
      Close(marked_);
      break;
    case VK_ESCAPE:
      Close(-1);
      break;
    default:
      break;
  }
}

LRESULT DropDownList::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  const POINT point{GET_X_LPARAM(lparam), GET_Y_LPARAM(lparam)};
  switch (message) {
    case WM_MOUSEACTIVATE:
      return MA_NOACTIVATE;
    case WM_MOUSEMOVE:
      if (const int index = ItemAt(point); index >= 0) Mark(index);
      return 0;
    case WM_LBUTTONDOWN:
      OnPress(point, wparam);
      return 0;
    case WM_LBUTTONUP:
      // The release of the press that opened the list: it came here by the capture, and is the page's.
      GiveToPage(message, wparam, point);
      return 0;
    case WM_CAPTURECHANGED:
      Close(-1);
      return 0;
    case WM_PAINT:
      Paint();
      return 0;
    default:
      return Window::OnMessage(message, wparam, lparam);
  }
}

void DropDownList::OnPress(POINT point, WPARAM keys) {
  const RECT client = ClientRect(hwnd());
  const bool inside = PtInRect(&client, point) != 0;
  Close(inside ? ItemAt(point) : -1);
  if (!inside) GiveToPage(WM_LBUTTONDOWN, keys, point);
}

void DropDownList::GiveToPage(UINT message, WPARAM keys, POINT point) {
  MapWindowPoints(hwnd(), page_window_, &point, 1);
  const RECT page = ClientRect(page_window_);
  if (message == WM_LBUTTONDOWN && PtInRect(&page, point) == 0) return;
  SendMessageW(page_window_, message, keys, MAKELPARAM(point.x, point.y));
}

int DropDownList::ItemAt(POINT point) const {
  const RECT client = ClientRect(hwnd());
  if (PtInRect(&client, point) == 0) return -1;
  const std::size_t index = static_cast<std::size_t>(point.y / kItemHeight);
  return index < list_.options.size() && list_.enabled[index] ? static_cast<int>(index) : -1;
}

void DropDownList::Mark(int index) {
  if (std::exchange(marked_, index) != index) InvalidateRect(hwnd(), nullptr, FALSE);
}

void DropDownList::Step(int direction) {
  const int count = static_cast<int>(list_.options.size());
  for (int next = marked_ + direction; next >= 0 && next < count; next += direction) {
    if (list_.enabled[static_cast<std::size_t>(next)]) return Mark(next);
  }
}

void DropDownList::Close(int chosen) {
  const auto choose = std::exchange(choose_, nullptr);
  if (choose == nullptr) return;
  if (hwnd() != nullptr) {
    ShowWindow(hwnd(), SW_HIDE);
    if (GetCapture() == hwnd()) ReleaseCapture();
  }
  choose(chosen);
}

void DropDownList::Paint() {
  PAINTSTRUCT paint{};
  HDC target = BeginPaint(hwnd(), &paint);
  const HGDIOBJ font = SelectObject(target, GetStockObject(DEFAULT_GUI_FONT));
  SetBkMode(target, TRANSPARENT);
  RECT item = ClientRect(hwnd());
  for (std::size_t i = 0; i < list_.options.size(); ++i) {
    const bool marked = static_cast<int>(i) == marked_;
    item.top = static_cast<LONG>(i) * kItemHeight;
    item.bottom = item.top + kItemHeight;
    FillRect(target, &item, GetSysColorBrush(marked ? COLOR_HIGHLIGHT : COLOR_WINDOW));
    const int colour = !list_.enabled[i] ? COLOR_GRAYTEXT : (marked ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT);
    SetTextColor(target, GetSysColor(colour));
    RECT text = item;
    InflateRect(&text, -4, 0);
    DrawTextW(target, quillmate::com::FromUtf8(list_.options[i]).c_str(), -1, &text,
              DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
  }
  SelectObject(target, font);
  EndPaint(hwnd(), &paint);
}

}  // namespace testbrowser::shell
