// Frame documents, their elements, and the walk down the selected path.
#include "locate/frames.h"

#include <exdisp.h>
#include <servprov.h>
#include <shlguid.h>
#include <string>

#include "api/patterns.h"
#include "com/bstr.h"
#include "com/encoding.h"
#include "com/variant.h"
#include "locate/locator_syntax.h"
#include "session/current_target.h"

namespace quillmate::locate {
namespace {

using com::ComPtr;

/// A page from another site refuses its document to its parent's scripts, and to us with them; the browser
/// object behind the frame's window gives it out.
ComPtr<IHTMLDocument2> DocumentThroughBrowser(IHTMLWindow2* window) {
  const auto services = com::Query<IServiceProvider>(window);
  ComPtr<IWebBrowser2> browser;
  ComPtr<IDispatch> document;
  if (services == nullptr || FAILED(services->QueryService(IID_IWebBrowserApp, IID_PPV_ARGS(&browser))) ||
      browser == nullptr || FAILED(browser->get_Document(&document))) {
    return {};
  }
  return com::Query<IHTMLDocument2>(document);
}

ComPtr<IHTMLDocument2> DocumentOf(IHTMLWindow2* window) {
  ComPtr<IHTMLDocument2> document;
  if (window == nullptr) return {};
  if (SUCCEEDED(window->get_document(&document)) && document != nullptr) return document;
  return DocumentThroughBrowser(window);
}

ComPtr<IHTMLWindow2> WindowOf(IHTMLDocument2* document) {
  ComPtr<IHTMLWindow2> window;
  if (FAILED(document->get_parentWindow(&window))) return {};
  return window;
}

ComPtr<IHTMLDocument2> RelativeDocument(IHTMLDocument2* document, bool top) {
  const auto window = WindowOf(document);
  ComPtr<IHTMLWindow2> other;
  if (window == nullptr || FAILED(top ? window->get_top(&other) : window->get_parent(&other))) return {};
  return DocumentOf(other.Get());
}

ComPtr<IHTMLDocument2> FrameAt(IHTMLDocument2* document, const std::string& position) {
  ComPtr<IHTMLFramesCollection2> frames;
  const long number = std::strtol(position.c_str(), nullptr, 10);
  if (FAILED(document->get_frames(&frames)) || frames == nullptr) return {};
  com::Variant frame;
  com::Variant index = com::Variant::Int(number);
  VARIANT by_position = index.get();
  if (FAILED(frames->item(&by_position, frame.put()))) return {};
  return DocumentOf(frame.As<IHTMLWindow2>().Get());
}

/// One property of a frame's element by which a locator names it.
enum class FrameKey { kId, kName, kSource };

bool AttributeIs(IHTMLElement* element, LONG flags, const std::string& wanted) {
  com::Variant value;
  const com::Bstr name(L"src");
  return SUCCEEDED(element->getAttribute(name.get(), flags, value.put())) && value.type() == VT_BSTR &&
         com::ToAnsi(value.ToText()->view()) == wanted;
}

bool SourceIs(IHTMLElement* element, const std::string& wanted) {
  constexpr LONG kAsWritten = 2;
  constexpr LONG kResolved = 4;
  return AttributeIs(element, kAsWritten, wanted) || AttributeIs(element, kResolved, wanted);
}

bool NamesFrame(FrameKey key, const std::string& wanted, IHTMLElement* element) {
  if (key == FrameKey::kSource) return SourceIs(element, wanted);
  com::Bstr actual;
  if (key == FrameKey::kId) {
    return SUCCEEDED(element->get_id(actual.put())) && com::ToAnsi(actual.view()) == wanted;
  }
  const auto frame = com::Query<IHTMLFrameBase>(element);
  return frame != nullptr && SUCCEEDED(frame->get_name(actual.put())) && com::ToAnsi(actual.view()) == wanted;
}

ComPtr<IHTMLDocument2> FrameAmong(IHTMLDocument3* document, const wchar_t* tag, FrameKey key,
                                  const std::string& wanted) {
  ComPtr<IHTMLElementCollection> elements;
  LONG count = 0;
  const com::Bstr name(tag);
  if (FAILED(document->getElementsByTagName(name.get(), &elements)) || elements == nullptr ||
      FAILED(elements->get_length(&count))) {
    return {};
  }
  for (LONG i = 0; i < count; ++i) {
    ComPtr<IDispatch> item;
    if (FAILED(elements->item(com::Variant::Int(i).get(), com::Variant::Int(0).get(), &item))) continue;
    const auto element = com::Query<IHTMLElement>(item);
    if (element != nullptr && NamesFrame(key, wanted, element.Get())) return GetFrameContent(element.Get());
  }
  return {};
}

/// The frame's element leads to its window, which two windows' positions would not do safely: scripts add
/// frames.
ComPtr<IHTMLDocument2> FrameBy(IHTMLDocument2* document, FrameKey key, const std::string& wanted) {
  const auto searchable = com::Query<IHTMLDocument3>(document);
  if (searchable == nullptr) return {};
  // A page has either frames or inline frames.
  for (const wchar_t* tag : {L"iframe", L"frame"}) {
    if (auto found = FrameAmong(searchable.Get(), tag, key, wanted)) return found;
  }
  return {};
}

ComPtr<IHTMLDocument2> FrameLookup(IHTMLDocument2* document, std::string_view locator) {
  if (locator == "relative=parent") return RelativeDocument(document, false);
  if (locator == "relative=top") return RelativeDocument(document, true);
  const std::string value(ValueOf(locator));
  if (api::Matches(api::Pattern::kIndex, locator)) return FrameAt(document, value);
  if (locator.starts_with("id=")) return FrameBy(document, FrameKey::kId, value);
  if (locator.starts_with("name=")) return FrameBy(document, FrameKey::kName, value);
  if (locator.starts_with("src=")) return FrameBy(document, FrameKey::kSource, value);
  return {};
}

}  // namespace

ComPtr<IHTMLDocument2> GetFrameContent(IHTMLElement* element) {
  const auto frame = com::Query<IHTMLFrameBase2>(element);
  ComPtr<IHTMLWindow2> window;
  if (frame == nullptr || FAILED(frame->get_contentWindow(&window))) return {};
  return DocumentOf(window.Get());
}

ComPtr<IHTMLDocument2> FindFrameDocument(IHTMLDocument2* document, std::string_view locator) {
  if (document == nullptr) return {};
  if (const auto unquoted = Unquote(locator)) {
    if (auto found = FrameLookup(document, *unquoted)) return found;
  }
  return FrameLookup(document, locator);
}

ComPtr<IHTMLDocument2> GetFrameDocument() {
  const session::WindowHolder* holder = session::ValidHolder();
  if (holder == nullptr) return {};
  auto document = holder->GetDocument();
  for (const std::string& locator : session::Current()->frame_path) {
    document = FindFrameDocument(document.Get(), locator);
  }
  return document;
}

bool IsTargetUsable() {
  const session::WindowHolder* holder = session::ValidHolder();
  return holder != nullptr && holder->GetDocument() != nullptr;
}

}  // namespace quillmate::locate
