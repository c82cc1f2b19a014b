#include "locate/document_area.h"

#include <cstdlib>
#include <string>

#include "com/bstr.h"
#include "com/variant.h"
#include "locate/frames.h"
#include "session/windows.h"

namespace quillmate {
namespace {

bool IsQuirksLayout(IHTMLDocument2* document) {
  const auto newer = com::Query<IHTMLDocument5>(document);
  com::Bstr mode;
  return newer != nullptr && SUCCEEDED(newer->get_compatMode(mode.put())) && mode.view() == L"BackCompat";
}

/// The element whose client area is the document's view.
com::ComPtr<IHTMLElement> ViewElement(IHTMLDocument2* document) {
  com::ComPtr<IHTMLElement> element;
  if (IsQuirksLayout(document)) {
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
  const auto placed = com::Query<IHTMLWindow3>(GetParentWindow(document));
  LONG left = 0;
  LONG top = 0;
  if (placed == nullptr || FAILED(placed->get_screenLeft(&left)) || FAILED(placed->get_screenTop(&top))) {
    return std::nullopt;
  }
  const auto size = ReadViewportSize(document);
  const auto shown = PageWindowArea(session);
  if (!size || !shown) return std::nullopt;
  const Rectangle origin{left, top, left + size->width, top + size->height};
  return DocumentArea{origin, Intersection(origin, *shown)};
}

/// A used length such as "7.5px" in whole pixels; any other unit counts as nothing.
int PixelsOf(const com::Bstr& length) {
  const std::wstring text(length.view());
  wchar_t* unit = nullptr;
  const double value = std::wcstod(text.c_str(), &unit);
  return std::wstring_view(unit) == L"px" ? static_cast<int>(value + 0.5) : 0;
}

/// How far a frame's document begins inside its element's rectangle: behind its border and padding.
ScreenPoint ContentOffset(IHTMLElement2* host) {
  LONG left = 0;
  LONG top = 0;
  host->get_clientLeft(&left);
  host->get_clientTop(&top);
  com::ComPtr<IHTMLCurrentStyle> style;
  com::Bstr padding_left;
  com::Bstr padding_top;
  if (SUCCEEDED(host->get_currentStyle(&style)) && style != nullptr) {
    com::Variant value;
    if (SUCCEEDED(style->get_paddingLeft(value.put()))) padding_left = value.ToText().value_or(com::Bstr());
    if (SUCCEEDED(style->get_paddingTop(value.put()))) padding_top = value.ToText().value_or(com::Bstr());
  }
  return {left + PixelsOf(padding_left), top + PixelsOf(padding_top)};
}

/// The frame element that hosts a document, known by the document's identity.
com::ComPtr<IHTMLElement> FindHostAmong(IHTMLDocument3* parent, const wchar_t* tag,
                                        IHTMLDocument2* document) {
  com::ComPtr<IHTMLElementCollection> elements;
  const com::Bstr name(tag);
  if (FAILED(parent->getElementsByTagName(name.get(), &elements)) || elements == nullptr) return {};
  for (LONG i = 0;; ++i) {
    com::ComPtr<IDispatch> item;
    if (FAILED(elements->item(com::Variant::Int(i).get(), com::Variant::Int(0).get(), &item))) return {};
    if (item == nullptr) return {};
    auto element = com::Query<IHTMLElement>(item);
    if (com::IsSameObject(ReadFrameDocument(element.Get()).Get(), document)) return element;
  }
}

com::ComPtr<IHTMLElement> FindHost(IHTMLDocument2* parent, IHTMLDocument2* document) {
  const auto searchable = com::Query<IHTMLDocument3>(parent);
  if (searchable == nullptr) return {};
  // A page has either frames or inline frames.
  for (const wchar_t* tag : {L"iframe", L"frame"}) {
    if (auto host = FindHostAmong(searchable.Get(), tag, document)) return host;
  }
  return {};
}

std::optional<DocumentArea> FrameDocumentArea(IHTMLDocument2* parent, IHTMLDocument2* document) {
  const auto host = FindHost(parent, document);
  const auto placed = com::Query<IHTMLElement2>(host);
  if (placed == nullptr) return std::nullopt;
  auto rectangle = ReadClientRect(host.Get());
  const auto parent_size = ReadViewportSize(parent);
  if (!rectangle || !parent_size) return std::nullopt;
  const ScreenPoint inset = ContentOffset(placed.Get());
  rectangle->left += inset.x;
  rectangle->top += inset.y;
  return FrameArea(*rectangle, *parent_size);
}

/// @param depth how many frames lie between the top document and this one.
std::optional<DocumentArea> ScreenAreaAtDepth(Session& session, IHTMLDocument2* document, size_t depth) {
  if (document == nullptr) return std::nullopt;
  if (depth == 0) return TopDocumentArea(session, document);
  const auto parent = FindFrameDocument(document, "relative=parent");
  const auto parent_area = ScreenAreaAtDepth(session, parent.Get(), depth - 1);
  if (!parent_area) return std::nullopt;
  const auto area = FrameDocumentArea(parent.Get(), document);
  if (!area) return std::nullopt;
  return LiftedBy(*area, *parent_area);
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

std::optional<DocumentArea> GetDocumentScreenArea(Session& session, IHTMLDocument2* document) {
  const CurrentTarget* target = session.Current();
  // Each entry of the path descends by one frame, so its length saves asking every window whether it is the
  // top.
  return target != nullptr ? ScreenAreaAtDepth(session, document, target->frame_path.size()) : std::nullopt;
}

}  // namespace quillmate
