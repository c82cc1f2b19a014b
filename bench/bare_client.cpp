#include "bare_client.h"

#include <oleacc.h>
#include <servprov.h>
#include <stdexcept>

#include "com/owned.h"

namespace quillmate::bench {
namespace {

using com::Bstr;
using com::ComPtr;

void Demand(HRESULT result, const char* call) {
  if (FAILED(result)) throw std::runtime_error(std::string("bare loop: ") + call + " failed");
}

template <class T>
ComPtr<T> Demand(ComPtr<T> object, const char* what) {
  if (object == nullptr) throw std::runtime_error(std::string("bare loop: no ") + what);
  return object;
}

/// Without the library of the interfaces in hand, Wine reads it again for every new proxy.
ComPtr<ITypeLib> LoadTypeLibrary() {
  constexpr GUID kMshtml = {0x3050F1C5, 0x98B5, 0x11CF, {0xBB, 0x82, 0x00, 0xAA, 0x00, 0xBD, 0xCE, 0x0B}};
  ComPtr<ITypeLib> library;
  LoadRegTypeLib(kMshtml, 4, 0, LOCALE_NEUTRAL, library.GetAddressOf());
  return Demand(library, "type library");
}

LRESULT AskForObject(HWND page) {
  DWORD_PTR answer = 0;
  SendMessageTimeoutW(page, RegisterWindowMessageW(L"WM_HTML_GETOBJECT"), 0, 0, SMTO_ABORTIFHUNG, 5000,
                      &answer);
  return static_cast<LRESULT>(answer);
}

template <class T>
ComPtr<T> ItemOf(IHTMLElementCollection* collection, LONG index) {
  ComPtr<IDispatch> item;
  Demand(collection->item(com::Variant::Int(index).get(), com::Variant::Int(0).get(), &item), "item");
  return Demand(com::Query<T>(item), "item's interface");
}

LONG LengthOf(IHTMLElementCollection* collection) {
  LONG length = 0;
  Demand(collection->get_length(&length), "get_length");
  return length;
}

std::wstring TextOf(IHTMLElement* element) {
  Bstr text;
  Demand(element->get_innerText(text.put()), "get_innerText");
  return std::wstring(text.view());
}

std::vector<std::wstring> ReadRow(IHTMLTableRow* row) {
  ComPtr<IHTMLElementCollection> cells;
  Demand(row->get_cells(&cells), "get_cells");
  std::vector<std::wstring> texts;
  const LONG count = LengthOf(cells.Get());
  for (LONG i = 0; i < count; ++i) texts.push_back(TextOf(ItemOf<IHTMLElement>(cells.Get(), i).Get()));
  return texts;
}

ComPtr<IHTMLDocument2> FirstFrame(IHTMLDocument2* document) {
  ComPtr<IHTMLFramesCollection2> frames;
  Demand(document->get_frames(&frames), "get_frames");
  VARIANT index = com::Variant::Int(0).get();
  com::Variant item;
  Demand(frames->item(&index, item.put()), "frames.item");
  ComPtr<IHTMLDocument2> inner;
  Demand(Demand(item.As<IHTMLWindow2>(), "window")->get_document(&inner), "window.document");
  return Demand(inner, "document");
}

}  // namespace

BareClient::BareClient(HWND page) : types_(LoadTypeLibrary()) {
  ComPtr<IServiceProvider> services;
  Demand(ObjectFromLresult(AskForObject(page), __uuidof(IServiceProvider), 0,
                           reinterpret_cast<void**>(services.GetAddressOf())),
         "ObjectFromLresult");
  Demand(services->QueryService(IID_IWebBrowserApp, __uuidof(IWebBrowser2),
                                reinterpret_cast<void**>(browser_.GetAddressOf())),
         "QueryService");
}

ComPtr<IHTMLDocument2> BareClient::Document() const {
  ComPtr<IDispatch> document;
  Demand(browser_->get_Document(&document), "get_Document");
  return Demand(com::Query<IHTMLDocument2>(document), "document");
}

std::vector<std::vector<std::wstring>> BareClient::ReadTable(const wchar_t* id) const {
  const auto table = Demand(com::Query<IHTMLTable>(FindById(id)), "table");
  ComPtr<IHTMLElementCollection> rows;
  Demand(table->get_rows(&rows), "get_rows");
  std::vector<std::vector<std::wstring>> texts;
  const LONG count = LengthOf(rows.Get());
  for (LONG i = 0; i < count; ++i) texts.push_back(ReadRow(ItemOf<IHTMLTableRow>(rows.Get(), i).Get()));
  return texts;
}

ComPtr<IHTMLElement> BareClient::FindByAttribute(const wchar_t* tag, const wchar_t* name,
                                                 const wchar_t* value) const {
  ComPtr<IHTMLElementCollection> found;
  const auto document = Demand(com::Query<IHTMLDocument3>(Document()), "IHTMLDocument3");
  Demand(document->getElementsByTagName(Bstr(tag).get(), &found), "getElementsByTagName");
  const LONG count = LengthOf(found.Get());
  for (LONG i = 0; i < count; ++i) {
    auto element = ItemOf<IHTMLElement>(found.Get(), i);
    com::Variant actual;
    Demand(element->getAttribute(Bstr(name).get(), 2, actual.put()), "getAttribute");
    if (actual.type() == VT_BSTR && actual.ToText()->view() == value) return element;
  }
  throw std::runtime_error("bare loop: not found");
}

ComPtr<IHTMLElement> BareClient::FindById(const wchar_t* id) const {
  ComPtr<IHTMLElement> element;
  const auto document = Demand(com::Query<IHTMLDocument3>(Document()), "IHTMLDocument3");
  Demand(document->getElementById(Bstr(id).get(), &element), "getElementById");
  return Demand(element, "element");
}

ComPtr<IHTMLElement> BareClient::FindByName(const wchar_t* name) const {
  ComPtr<IHTMLElementCollection> found;
  const auto document = Demand(com::Query<IHTMLDocument3>(Document()), "IHTMLDocument3");
  Demand(document->getElementsByName(Bstr(name).get(), &found), "getElementsByName");
  return ItemOf<IHTMLElement>(found.Get(), 0);
}

ComPtr<IHTMLElement> BareClient::FindByClass(const wchar_t* class_name) const {
  ComPtr<IHTMLElementCollection> found;
  const auto document = Demand(com::Query<IHTMLDocument7>(Document()), "IHTMLDocument7");
  Demand(document->getElementsByClassName(Bstr(class_name).get(), &found), "getElementsByClassName");
  return ItemOf<IHTMLElement>(found.Get(), 0);
}

std::wstring BareClient::TextInFirstFrames(int depth, const wchar_t* id) const {
  ComPtr<IHTMLDocument2> document = Document();
  for (int level = 0; level < depth; ++level) document = FirstFrame(document.Get());
  ComPtr<IHTMLElement> element;
  const auto searchable = Demand(com::Query<IHTMLDocument3>(document), "IHTMLDocument3");
  Demand(searchable->getElementById(Bstr(id).get(), &element), "getElementById");
  return TextOf(Demand(element, "element").Get());
}

}  // namespace quillmate::bench
