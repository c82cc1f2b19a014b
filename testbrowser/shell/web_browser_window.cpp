// The part of the browser object that is about its frame's window. Places are screen pixels.
#include "shell/frame.h"
#include "shell/tab.h"
#include "shell/web_browser.h"

namespace testbrowser::shell {
namespace {

RECT PlaceOf(HWND window) {
  RECT place{};
  GetWindowRect(window, &place);
  return place;
}

}  // namespace

HRESULT WebBrowser::get_HWND(SHANDLE_PTR* window) {
  if (window == nullptr) return E_POINTER;
  *window = 0;
  if (const auto refused = Refused()) return *refused;
  *window = reinterpret_cast<SHANDLE_PTR>(tab_->Frame().hwnd());
  return S_OK;
}

HRESULT WebBrowser::get_Visible(VARIANT_BOOL* visible) {
  if (visible == nullptr) return E_POINTER;
  if (const auto refused = Refused()) return *refused;
  *visible = IsWindowVisible(tab_->Frame().hwnd()) != 0 ? VARIANT_TRUE : VARIANT_FALSE;
  return S_OK;
}

HRESULT WebBrowser::put_Visible(VARIANT_BOOL visible) {
  if (const auto refused = Refused()) return *refused;
  ShowWindow(tab_->Frame().hwnd(), visible != VARIANT_FALSE ? SW_SHOW : SW_HIDE);
  return S_OK;
}

template <class Change>
HRESULT WebBrowser::ChangePlace(Change change) {
  if (const auto refused = Refused()) return *refused;
  HWND frame = tab_->Frame().hwnd();
  RECT place = PlaceOf(frame);
  change(place);
  const BOOL moved = SetWindowPos(frame, nullptr, place.left, place.top, place.right - place.left,
                                  place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
  return moved != 0 ? S_OK : E_FAIL;
}

template <class Measure>
HRESULT WebBrowser::ReadPlace(LONG* out, Measure measure) {
  if (out == nullptr) return E_POINTER;
  if (const auto refused = Refused()) return *refused;
  *out = measure(PlaceOf(tab_->Frame().hwnd()));
  return S_OK;
}

HRESULT WebBrowser::get_Left(LONG* left) {
  return ReadPlace(left, [](const RECT& place) { return place.left; });
}
HRESULT WebBrowser::get_Top(LONG* top) {
  return ReadPlace(top, [](const RECT& place) { return place.top; });
}
HRESULT WebBrowser::get_Width(LONG* width) {
  return ReadPlace(width, [](const RECT& place) { return place.right - place.left; });
}
HRESULT WebBrowser::get_Height(LONG* height) {
  return ReadPlace(height, [](const RECT& place) { return place.bottom - place.top; });
}

HRESULT WebBrowser::put_Left(LONG left) {
  return ChangePlace([left](RECT& place) { OffsetRect(&place, left - place.left, 0); });
}
HRESULT WebBrowser::put_Top(LONG top) {
  return ChangePlace([top](RECT& place) { OffsetRect(&place, 0, top - place.top); });
}
HRESULT WebBrowser::put_Width(LONG width) {
  return ChangePlace([width](RECT& place) { place.right = place.left + width; });
}
HRESULT WebBrowser::put_Height(LONG height) {
  return ChangePlace([height](RECT& place) { place.bottom = place.top + height; });
}

HRESULT WebBrowser::ClientToWindow(int* width, int* height) {
  if (width == nullptr || height == nullptr) return E_POINTER;
  if (const auto refused = Refused()) return *refused;
  const RECT frame = PlaceOf(tab_->Frame().hwnd());
  const RECT page = ClientRect(tab_->ServerWindow());
  *width += frame.right - frame.left - page.right;
  *height += frame.bottom - frame.top - page.bottom;
  return S_OK;
}

}  // namespace testbrowser::shell
