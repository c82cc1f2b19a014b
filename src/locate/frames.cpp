#include "locate/frames.h"

#include <exdisp.h>
#include <servprov.h>
#include <shlguid.h>
#include <charconv>
#include <climits>
#include <optional>
#include <string>
#include <utility>

#include "api/validation.h"
#include "com/call_limit.h"
#include "com/encoding.h"
#include "com/owned.h"
#include "locate/attribute_text.h"
#include "locate/collection_matches.h"
#include "locate/locator_syntax.h"

namespace quillmate {
namespace {

// A page has either frames or inline frames.
constexpr const wchar_t* kFrameTags[] = {L"iframe", L"frame"};

/// get_document fails with E_ACCESSDENIED for a cross-origin frame. The frame's IWebBrowser2 returns the
/// document without an origin check.
com::ComPtr<IHTMLDocument2> DocumentThroughBrowser(IHTMLWindow2* window) {
  const auto services = com::Query<IServiceProvider>(window);
  com::ComPtr<IWebBrowser2> browser;
  com::ComPtr<IDispatch> document;
  if (services == nullptr || FAILED(services->QueryService(IID_IWebBrowserApp, IID_PPV_ARGS(&browser))) ||
      browser == nullptr || FAILED(browser->get_Document(&document))) {
    return {};
  }
  return com::Query<IHTMLDocument2>(document);
}

/// A frame has two document objects: this gives the same one every time that it is asked from the same
/// parent, and only then.
/// @return S_OK; else a failure in transit: a frame that is there has a document, or will have one.
HRESULT DocumentOf(IHTMLWindow2* window, com::ComPtr<IHTMLDocument2>& document) {
  if (window == nullptr) return RPC_E_CALL_REJECTED;
  const HRESULT result = window->get_document(&document);
  if (com::FailedInTransit(result)) return result;
  if (document == nullptr) document = DocumentThroughBrowser(window);
  return document != nullptr ? S_OK : RPC_E_CALL_REJECTED;
}

HRESULT DocumentInside(IHTMLElement* frame, com::ComPtr<IHTMLDocument2>& document) {
  com::ComPtr<IHTMLFrameBase2> framed;
  com::ComPtr<IHTMLWindow2> window;
  HRESULT result = com::QueryKnown(frame, framed);
  if (SUCCEEDED(result)) result = framed->get_contentWindow(&window);
  if (FAILED(result)) return com::FailedInTransit(result) ? result : S_FALSE;
  return DocumentOf(window.Get(), document);
}

HRESULT EnterByPosition(FramePath& path, std::string_view position) {
  com::ComPtr<IHTMLFramesCollection2> frames;
  LONG number = LONG_MAX;  // for a number that is too long to be one
  std::from_chars(position.data(), position.data() + position.size(), number);
  com::Variant frame;
  com::Variant index = com::Variant::Int(number);
  VARIANT by_position = index.get();
  HRESULT result = path.back().document->get_frames(&frames);
  if (SUCCEEDED(result) && frames != nullptr) result = frames->item(&by_position, frame.put());
  if (FAILED(result)) return com::FailedInTransit(result) ? result : S_FALSE;
  FrameLevel level;
  result = DocumentOf(frame.As<IHTMLWindow2>().Get(), level.document);
  if (result == S_OK) path.push_back(std::move(level));
  return result;
}

/// The page's own resolution of an address: an anchor made for it alone resolves by the page's base. Not
/// every document mode resolves the attribute of the frame itself.
std::optional<std::string> FullAddress(IHTMLDocument2* document, const std::string& address) {
  com::ComPtr<IHTMLElement> element;
  if (FAILED(document->createElement(com::Bstr(L"a").get(), &element))) return std::nullopt;
  const auto anchor = com::Query<IHTMLAnchorElement>(element);
  com::Bstr full;
  if (anchor == nullptr || FAILED(anchor->put_href(com::Bstr(com::FromAnsi(address)).get())) ||
      FAILED(anchor->get_href(full.put()))) {
    return std::nullopt;
  }
  return com::ToAnsi(full.view());
}

/// @return whether the frame's address attribute is the wanted one, as written or as the page resolves it.
HRESULT HasSource(IHTMLDocument2* document, IHTMLElement* frame, const std::string& wanted) {
  constexpr LONG kAsFullAddress = 4;
  std::optional<std::string> written;
  const HRESULT result = ReadAttribute(frame, "src", written);
  if (com::FailedInTransit(result)) return result;
  if (!written || written->empty()) return S_FALSE;
  if (*written == wanted) return S_OK;
  com::Variant full;
  if (SUCCEEDED(frame->getAttribute(com::Bstr(L"src").get(), kAsFullAddress, full.put()))) {
    const auto text = full.ToText();
    if (text && com::ToAnsi(text->view()) == wanted) return S_OK;
  }
  return FullAddress(document, *written) == wanted ? S_OK : S_FALSE;
}

HRESULT CollectFrames(IHTMLDocument2* document, const wchar_t* tag,
                      com::ComPtr<IHTMLElementCollection>& frames) {
  com::ComPtr<IHTMLDocument3> searchable;
  const HRESULT result = com::QueryKnown(document, searchable);
  return FAILED(result) ? result : searchable->getElementsByTagName(com::Bstr(tag).get(), &frames);
}

/// Goes through the frame elements of a document, of one tag and then of the other, that a selector takes.
/// @param is_wanted returns S_OK for the element looked for, S_FALSE for any other, else why it cannot tell.
template <class IsWanted>
HRESULT FindAmongFrames(IHTMLDocument2* document, const Selector& selector, com::ComPtr<IHTMLElement>& found,
                        IsWanted is_wanted) {
  for (const wchar_t* tag : kFrameTags) {
    com::ComPtr<IHTMLElementCollection> frames;
    HRESULT result = CollectFrames(document, tag, frames);
    if (FAILED(result)) return result;
    CollectionMatches matches({std::move(frames), true, {}}, selector, Wanted::kFirst);
    while ((result = matches.Next(found)) == S_OK) {
      result = is_wanted(found.Get());
      if (result != S_FALSE) return result;
    }
    if (FAILED(result)) return result;
  }
  found.Reset();
  return S_FALSE;
}

Selector WithValue(Predicate::Source source, std::string_view value) {
  return Predicate{Predicate::Test::kEquals, source, "name", std::string(value)};
}

/// The frame's element leads to its window; its position among the elements would not, once scripts have
/// added frames.
HRESULT EnterByElement(FramePath& path, std::string_view locator) {
  IHTMLDocument2* document = path.back().document.Get();
  const std::string value(ValueOf(locator));
  const auto any = [](IHTMLElement*) { return S_OK; };
  FrameLevel level;
  HRESULT result = S_FALSE;
  if (Matches(Pattern::kId, locator)) {
    result = FindAmongFrames(document, WithValue(Predicate::Source::kId, value), level.element, any);
  } else if (Matches(Pattern::kName, locator)) {
    result = FindAmongFrames(document, WithValue(Predicate::Source::kAttribute, value), level.element, any);
  } else if (Matches(Pattern::kSrc, locator)) {
    result = FindAmongFrames(document, EveryItem{}, level.element,
                             [&](IHTMLElement* frame) { return HasSource(document, frame, value); });
  }
  if (result == S_OK) result = DocumentInside(level.element.Get(), level.document);
  if (result == S_OK) path.push_back(std::move(level));
  return FAILED(result) && !com::FailedInTransit(result) ? S_FALSE : result;
}

HRESULT Enter(FramePath& path, std::string_view locator) {
  if (locator == "relative=top") {
    path.resize(1);
    return S_OK;
  }
  if (locator == "relative=parent") {
    if (path.size() > 1) path.pop_back();
    return S_OK;
  }
  if (Matches(Pattern::kIndex, locator)) return EnterByPosition(path, ValueOf(locator));
  return EnterByElement(path, locator);
}

}  // namespace

com::ComPtr<IHTMLWindow2> GetParentWindow(IHTMLDocument2* document) {
  com::ComPtr<IHTMLWindow2> window;
  if (FAILED(document->get_parentWindow(&window))) return {};
  return window;
}

HRESULT EnterFrame(FramePath& path, std::string_view locator) {
  if (const auto unquoted = Unquote(locator)) {
    const HRESULT result = Enter(path, *unquoted);
    if (result != S_FALSE) return result;
  }
  return Enter(path, locator);
}

com::ComPtr<IHTMLElement> FindFrameElement(const FramePath& path, size_t level) {
  if (path[level].element != nullptr) return path[level].element;
  com::ComPtr<IHTMLElement> found;
  FindAmongFrames(path[level - 1].document.Get(), EveryItem{}, found, [&](IHTMLElement* frame) {
    com::ComPtr<IHTMLDocument2> document;
    const bool is_shown = DocumentInside(frame, document) == S_OK;
    return is_shown && com::IsSameObject(document.Get(), path[level].document.Get()) ? S_OK : S_FALSE;
  });
  return found;
}

}  // namespace quillmate
