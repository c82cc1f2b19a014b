#include "locate/frames.h"

#include <exdisp.h>
#include <servprov.h>
#include <shlguid.h>
#include <shlwapi.h>
#include <wininet.h>
#include <charconv>
#include <climits>
#include <string>
#include <utility>

#include "api/patterns.h"
#include "com/bstr.h"
#include "com/encoding.h"
#include "com/variant.h"
#include "locate/attribute_text.h"
#include "locate/collections.h"
#include "locate/locator_syntax.h"

namespace quillmate {
namespace {

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

com::ComPtr<IHTMLDocument2> DocumentOf(IHTMLWindow2* window) {
  com::ComPtr<IHTMLDocument2> document;
  if (window == nullptr) return {};
  if (SUCCEEDED(window->get_document(&document)) && document != nullptr) return document;
  return DocumentThroughBrowser(window);
}

com::ComPtr<IHTMLDocument2> RelativeDocument(IHTMLDocument2* document, bool top) {
  const auto window = GetParentWindow(document);
  com::ComPtr<IHTMLWindow2> other;
  if (window == nullptr || FAILED(top ? window->get_top(&other) : window->get_parent(&other))) return {};
  return DocumentOf(other.Get());
}

com::ComPtr<IHTMLDocument2> FrameAt(IHTMLDocument2* document, std::string_view position) {
  com::ComPtr<IHTMLFramesCollection2> frames;
  LONG number = LONG_MAX;  // for a number that is too long to be one
  std::from_chars(position.data(), position.data() + position.size(), number);
  if (FAILED(document->get_frames(&frames)) || frames == nullptr) return {};
  com::Variant frame;
  com::Variant index = com::Variant::Int(number);
  VARIANT by_position = index.get();
  if (FAILED(frames->item(&by_position, frame.put()))) return {};
  return DocumentOf(frame.As<IHTMLWindow2>().Get());
}

/// What a locator names a frame by, and which one.
struct FrameName {
  enum class Key { kId, kName, kSource };
  Key key;
  std::string wanted;
  /// The address that sources are relative to.
  com::Bstr base;
};

std::string Resolve(const com::Bstr& base, const std::string& address) {
  wchar_t resolved[INTERNET_MAX_URL_LENGTH] = L"";
  DWORD length = INTERNET_MAX_URL_LENGTH;
  const std::wstring relative = com::FromAnsi(address);
  if (base.empty() || FAILED(UrlCombineW(base.get(), relative.c_str(), resolved, &length, 0))) return {};
  return com::ToAnsi(resolved);
}

/// The attribute as written is compared first, the address that it stands for second.
bool SourceIs(IHTMLElement* element, const FrameName& name) {
  const auto source = ReadAttribute(element, "src");
  return source && (*source == name.wanted || Resolve(name.base, *source) == name.wanted);
}

bool IsNamed(IHTMLElement* element, const FrameName& name) {
  if (name.key == FrameName::Key::kSource) return SourceIs(element, name);
  com::Bstr actual;
  if (name.key == FrameName::Key::kId) {
    return SUCCEEDED(element->get_id(actual.put())) && com::ToAnsi(actual.view()) == name.wanted;
  }
  const auto frame = com::Query<IHTMLFrameBase>(element);
  return frame != nullptr && SUCCEEDED(frame->get_name(actual.put())) &&
         com::ToAnsi(actual.view()) == name.wanted;
}

com::ComPtr<IHTMLDocument2> FrameAmong(IHTMLDocument3* document, const wchar_t* tag, const FrameName& name) {
  com::ComPtr<IHTMLElementCollection> elements;
  if (FAILED(document->getElementsByTagName(com::Bstr(tag).get(), &elements))) return {};
  CollectionMatches frames(std::move(elements), EveryItem{});
  while (const auto element = frames.Next()) {
    if (IsNamed(element.Get(), name)) return ReadFrameDocument(element.Get());
  }
  return {};
}

/// The frame's element leads to its window; its position among the elements would not, once scripts have
/// added frames.
com::ComPtr<IHTMLDocument2> FrameBy(IHTMLDocument2* document, FrameName::Key key, std::string_view wanted) {
  const auto searchable = com::Query<IHTMLDocument3>(document);
  if (searchable == nullptr) return {};
  FrameName name{key, std::string(wanted), {}};
  if (key == FrameName::Key::kSource) document->get_URL(name.base.put());
  for (const wchar_t* tag : {L"iframe", L"frame"}) {
    if (auto found = FrameAmong(searchable.Get(), tag, name)) return found;
  }
  return {};
}

com::ComPtr<IHTMLDocument2> FrameLookup(IHTMLDocument2* document, std::string_view locator) {
  if (locator == "relative=parent") return RelativeDocument(document, false);
  if (locator == "relative=top") return RelativeDocument(document, true);
  const std::string_view value = ValueOf(locator);
  if (Matches(Pattern::kIndex, locator)) return FrameAt(document, value);
  if (locator.starts_with("id=")) return FrameBy(document, FrameName::Key::kId, value);
  if (locator.starts_with("name=")) return FrameBy(document, FrameName::Key::kName, value);
  if (locator.starts_with("src=")) return FrameBy(document, FrameName::Key::kSource, value);
  return {};
}

}  // namespace

com::ComPtr<IHTMLWindow2> GetParentWindow(IHTMLDocument2* document) {
  com::ComPtr<IHTMLWindow2> window;
  if (FAILED(document->get_parentWindow(&window))) return {};
  return window;
}

com::ComPtr<IHTMLDocument2> ReadFrameDocument(IHTMLElement* element) {
  const auto frame = com::Query<IHTMLFrameBase2>(element);
  com::ComPtr<IHTMLWindow2> window;
  if (frame == nullptr || FAILED(frame->get_contentWindow(&window))) return {};
  return DocumentOf(window.Get());
}

com::ComPtr<IHTMLDocument2> FindFrameDocument(IHTMLDocument2* document, std::string_view locator) {
  if (document == nullptr) return {};
  if (const auto unquoted = Unquote(locator)) {
    if (auto found = FrameLookup(document, *unquoted)) return found;
  }
  return FrameLookup(document, locator);
}

}  // namespace quillmate
