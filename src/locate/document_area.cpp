#include "locate/document_area.h"

#include <charconv>
#include <string>
#include <string_view>

#include "com/encoding.h"
#include "com/owned.h"
#include "session/windows.h"

namespace quillmate {
namespace {

/// @return whether a document has quirks layout; nothing when it cannot be asked.
std::optional<bool> IsQuirksLayout(IHTMLDocument2* document) {
  const auto newer = com::Query<IHTMLDocument5>(document);
  com::Bstr mode;
  if (newer == nullptr || FAILED(newer->get_compatMode(mode.put()))) return std::nullopt;
  return mode.view() == L"BackCompat";
}

/// The element whose client area is the document's view.
com::ComPtr<IHTMLElement> ViewElement(IHTMLDocument2* document) {
  com::ComPtr<IHTMLElement> element;
  const auto quirks = IsQuirksLayout(document);
  if (!quirks) return element;
  if (*quirks) {
    document->get_body(&element);
  } else if (const auto newer = com::Query<IHTMLDocument3>(document)) {
    newer->get_documentElement(&element);
  }
  return element;
}

/// @return the size of a document's view: of its body in quirks layout, else of its document element.
std::optional<ViewportSize> ReadViewportSize(IHTMLDocument2* document) {
  const auto view = com::Query<IHTMLElement2>(ViewElement(document));
  LONG width = 0;
  LONG height = 0;
  if (view == nullptr || FAILED(view->get_clientWidth(&width)) || FAILED(view->get_clientHeight(&height))) {
    return std::nullopt;
  }
  return ViewportSize{static_cast<int>(width), static_cast<int>(height)};
}

/// @return the screen position of a document's client area.
std::optional<ScreenPoint> ReadScreenOrigin(IHTMLDocument2* document) {
  const auto placed = com::Query<IHTMLWindow3>(GetParentWindow(document));
  LONG left = 0;
  LONG top = 0;
  if (placed == nullptr || FAILED(placed->get_screenLeft(&left)) || FAILED(placed->get_screenTop(&top))) {
    return std::nullopt;
  }
  return ScreenPoint{static_cast<int>(left), static_cast<int>(top)};
}

struct ServerSearch {
  HWND found = nullptr;
  bool visible = false;
};

BOOL CALLBACK TakeServerWindow(HWND window, LPARAM parameter) {
  auto& search = *reinterpret_cast<ServerSearch*>(parameter);
  if (!IsWindowOfClass(window, L"Internet Explorer_Server")) return TRUE;
  search.visible = IsWindowVisible(window) != FALSE;
  if (search.found == nullptr || search.visible) search.found = window;
  return !search.visible;
}

/// The client area of the window that shows the current target's page: the visible one among the frame's
/// tabs.
std::optional<Rectangle> PageWindowArea(Session& session) {
  const WindowHolder* holder = session.ValidHolder();
  HWND window = holder != nullptr ? holder->GetWindowHandle() : nullptr;
  if (window == nullptr) return std::nullopt;
  ServerSearch search;
  EnumChildWindows(window, TakeServerWindow, reinterpret_cast<LPARAM>(&search));
  RECT client;
  if (search.found == nullptr || !GetClientRect(search.found, &client)) return std::nullopt;
  POINT origin{0, 0};
  ClientToScreen(search.found, &origin);
  return Rectangle{origin.x, origin.y, origin.x + client.right, origin.y + client.bottom};
}

std::optional<DocumentArea> TopDocumentArea(Session& session, IHTMLDocument2* document) {
  const auto place = ReadScreenOrigin(document);
  const auto size = ReadViewportSize(document);
  const auto shown = PageWindowArea(session);
  if (!place || !size || !shown) return std::nullopt;
  const Rectangle origin{place->x, place->y, place->x + size->width, place->y + size->height};
  return DocumentArea{origin, Intersection(origin, *shown)};
}

/// @return a length such as "7.5px" in whole pixels; nothing in any other unit.
std::optional<int> PixelsOf(HRESULT result, const com::Variant& length) {
  const auto text = SUCCEEDED(result) ? length.ToText() : std::nullopt;
  if (!text) return std::nullopt;
  const std::string digits = com::ToAnsi(text->view());
  double value = 0;
  const char* end = digits.data() + digits.size();
  const auto parsed = std::from_chars(digits.data(), end, value);
  if (std::string_view(parsed.ptr, end) != "px" || !(value >= 0 && value < 1e6)) return std::nullopt;
  return static_cast<int>(value + 0.5);
}

/// How far a frame's document begins inside its element's rectangle, where the element's padding is given in
/// pixels.
std::optional<ScreenPoint> ReadInset(IHTMLElement2* frame) {
  LONG left = 0;
  LONG top = 0;
  com::ComPtr<IHTMLCurrentStyle> style;
  if (FAILED(frame->get_clientLeft(&left)) || FAILED(frame->get_clientTop(&top)) ||
      FAILED(frame->get_currentStyle(&style)) || style == nullptr) {
    return std::nullopt;
  }
  com::Variant padding;
  const auto padding_left = PixelsOf(style->get_paddingLeft(padding.put()), padding);
  const auto padding_top = PixelsOf(style->get_paddingTop(padding.put()), padding);
  if (!padding_left || !padding_top) return std::nullopt;
  return ScreenPoint{static_cast<int>(left) + *padding_left, static_cast<int>(top) + *padding_top};
}

/// @return where a frame's document begins, in the client pixels of its parent.
std::optional<ScreenPoint> ReadFrameOrigin(const FramePath& path, size_t level, const Rectangle& frame,
                                           IHTMLElement2* element) {
  if (const auto inset = ReadInset(element)) return ScreenPoint{frame.left + inset->x, frame.top + inset->y};
  // The padding keeps the unit of its style sheet, but both windows know their places on the screen.
  const auto inner = ReadScreenOrigin(path[level].document.Get());
  const auto outer = ReadScreenOrigin(path[level - 1].document.Get());
  if (!inner || !outer) return std::nullopt;
  const ScreenPoint origin{inner->x - outer->x, inner->y - outer->y};
  return IsInside(origin, frame) ? std::optional(origin) : std::nullopt;
}

std::optional<DocumentArea> FrameDocumentArea(const FramePath& path, size_t level) {
  const auto element = FindFrameElement(path, level);
  const auto measured = com::Query<IHTMLElement2>(element);
  if (measured == nullptr) return std::nullopt;
  const auto frame = ReadClientRect(element.Get());
  if (!frame) return std::nullopt;
  const auto origin = ReadFrameOrigin(path, level, *frame, measured.Get());
  const auto size = ReadViewportSize(path[level].document.Get());
  const auto parent_size = ReadViewportSize(path[level - 1].document.Get());
  if (!origin || !size || !parent_size) return std::nullopt;
  return FrameArea({origin->x, origin->y, origin->x + size->width, origin->y + size->height}, *parent_size);
}

}  // namespace

std::optional<Rectangle> ReadClientRect(IHTMLElement* element) {
  const auto placed = com::Query<IHTMLElement2>(element);
  com::ComPtr<IHTMLRect> bounds;
  if (placed == nullptr || FAILED(placed->getBoundingClientRect(&bounds)) || bounds == nullptr)
    return std::nullopt;
  LONG left = 0;
  LONG top = 0;
  LONG right = 0;
  LONG bottom = 0;
  if (FAILED(bounds->get_left(&left)) || FAILED(bounds->get_top(&top)) || FAILED(bounds->get_right(&right)) ||
      FAILED(bounds->get_bottom(&bottom))) {
    return std::nullopt;
  }
  return Rectangle{static_cast<int>(left), static_cast<int>(top), static_cast<int>(right),
                   static_cast<int>(bottom)};
}

std::optional<DocumentArea> GetDocumentScreenArea(Session& session, const FramePath& path) {
  auto area = TopDocumentArea(session, path.front().document.Get());
  for (size_t level = 1; area && level < path.size(); ++level) {
    const auto frame = FrameDocumentArea(path, level);
    area = frame ? std::optional(LiftedBy(*frame, *area)) : std::nullopt;
  }
  return area;
}

}  // namespace quillmate
