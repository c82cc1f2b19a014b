// Facts about Internet Explorer's objects, asked of a browser over COM from another process. A fact is one
// row: its name, the document modes that it holds in, the question, and the answer as text. docs/fidelity.md
// says of each name what the behaviour is and where it is known from; rows of one name are one fact in
// several modes.
#pragma once

#include <windows.h>
#include <exdisp.h>
#include <mshtml.h>
#include <oleacc.h>
#include <servprov.h>
#include <span>
#include <stdexcept>
#include <string>

#include "com/owned.h"

namespace quillmate::test {

using com::Bstr;
using com::ComPtr;
using com::Variant;

/// Document modes as a set.
enum Modes : unsigned {
  k5 = 1,
  k7 = 2,
  k8 = 4,
  k9 = 8,
  k10 = 16,
  k11 = 32,
  kAll = 63,
  kTo7 = k5 | k7,
  kTo8 = kTo7 | k8,
  kFrom8 = kAll & ~kTo7,
  kFrom9 = kAll & ~kTo8,
};

/// The page that is asked: the browser's document in one document mode.
struct Page {
  ComPtr<IHTMLDocument2> document;
  ComPtr<IWebBrowser2> browser;
  HWND server = nullptr;

  /// The document by another of its interfaces. Throws when it has none.
  template <class T>
  ComPtr<T> As() const {
    return Demand(com::Query<T>(document));
  }
  ComPtr<IHTMLElement> Element(const wchar_t* id) const;
  template <class T>
  ComPtr<T> Element(const wchar_t* id) const {
    return Demand(com::Query<T>(Element(id)));
  }
  template <class T>
  static ComPtr<T> Demand(ComPtr<T> object) {
    if (object == nullptr) throw std::runtime_error("no such object or interface");
    return object;
  }
};

/// Gets at the page of a window by its document, which may come later than the window. Throws when it does not.
Page Reach(HWND server);
/// Sends the page's browser to an address; fails the test when the browser refuses.
void Open(const Page& page, const std::string& address);
/// The same, and waits until the address is loaded.
void Navigate(const Page& page, const std::string& address);

struct Fact {
  const char* name;
  unsigned modes;
  std::string (*ask)(const Page&);
  const char* answer;
};

/// A page by its source and what its document says of itself: mode and compatMode.
struct OtherPage {
  const char* name;
  const char* source;
  const char* answer;
};

std::span<const OtherPage> OtherPages();
std::string ModeAndCompatMode(const Page& page);

std::span<const Fact> DocumentFacts();
std::span<const Fact> CollectionFacts();
std::span<const Fact> ElementFacts();
std::span<const Fact> ActionFacts();
std::span<const Fact> ControlFacts();
std::span<const Fact> FrameAndWindowFacts();
std::span<const Fact> BrowserFacts();

// Answers as text: "S_OK" is left out before a value, "NULL" is a null text or object, 'text' a text,
// <TAG#id> an element, [..] a collection.
std::string Answer(HRESULT result);
std::string Answer(HRESULT result, const Bstr& text);
std::string Answer(HRESULT result, LONG number);
std::string Answer(HRESULT result, const Variant& value);
std::string Answer(HRESULT result, IUnknown* object);
/// A text that a property answers.
template <class Interface>
std::string Text(const ComPtr<Interface>& object, HRESULT (STDMETHODCALLTYPE Interface::*get)(BSTR*)) {
  Bstr text;
  const HRESULT result = (object.Get()->*get)(text.put());
  return Answer(result, text);
}
/// @return what a page's window answers to WM_HTML_GETOBJECT, once it answers.
LRESULT AskForObject(HWND server);
/// The object behind a page's window.
template <class T>
ComPtr<T> ObjectOf(HWND server) {
  ComPtr<T> object;
  ObjectFromLresult(AskForObject(server), __uuidof(T), 0, reinterpret_cast<void**>(object.GetAddressOf()));
  return Page::Demand(object);
}
/// Runs a script of the page's own.
void Run(const Page& page, const wchar_t* script);

}  // namespace quillmate::test
