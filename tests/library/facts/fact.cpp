// Answers as text.
#include "facts/fact.h"

#include <map>

#include "com/encoding.h"

namespace quillmate::test {
namespace {

std::string Quoted(const Bstr& text) {
  return text.get() == nullptr ? "NULL" : "'" + com::ToUtf8(text.view()) + "'";
}

std::string Name(IHTMLElement* element) {
  Bstr tag;
  Bstr id;
  element->get_tagName(tag.put());
  element->get_id(id.put());
  return "<" + com::ToUtf8(tag.view()) + (id.empty() ? "" : "#" + com::ToUtf8(id.view())) + ">";
}

std::string List(IHTMLElementCollection* collection) {
  std::string result = "[";
  LONG length = 0;
  collection->get_length(&length);
  for (LONG i = 0; i < length; ++i) {
    ComPtr<IDispatch> item;
    collection->item(Variant::Int(i).get(), Variant().get(), &item);
    const auto element = com::Query<IHTMLElement>(item);
    result += element != nullptr ? Name(element.Get()) : "?";
  }
  return result + "]";
}

std::string ObjectText(IUnknown* object) {
  if (object == nullptr) return "NULL";
  // A form is both an element and a collection; asked for one it is an element.
  if (const auto element = com::Query<IHTMLElement>(object)) return Name(element.Get());
  if (const auto collection = com::Query<IHTMLElementCollection>(object)) return List(collection.Get());
  if (com::Query<IHTMLWindow2>(object) != nullptr) return "window";
  if (com::Query<IHTMLDocument2>(object) != nullptr) return "document";
  return "object";
}

std::string ValueText(const VARIANT& value) {
  switch (value.vt) {
    case VT_EMPTY:
      return "VT_EMPTY";
    case VT_NULL:
      return "VT_NULL";
    case VT_I4:
      return "VT_I4 " + std::to_string(value.lVal);
    case VT_R4:
      return "VT_R4 " + std::to_string(static_cast<int>(value.fltVal));
    case VT_R8:
      return "VT_R8 " + std::to_string(value.dblVal);
    case VT_BOOL:
      return value.boolVal != VARIANT_FALSE ? "VT_BOOL true" : "VT_BOOL false";
    case VT_BSTR:
      return "VT_BSTR " + (value.bstrVal == nullptr
                               ? "NULL"
                               : "'" + com::ToUtf8({value.bstrVal, SysStringLen(value.bstrVal)}) + "'");
    case VT_DISPATCH:
      return "VT_DISPATCH " + ObjectText(value.pdispVal);
    default:
      return "VT " + std::to_string(value.vt);
  }
}

std::string With(HRESULT result, const std::string& value) {
  if (FAILED(result)) return Answer(result);
  return result == S_OK ? value : Answer(result) + " " + value;
}

}  // namespace

ComPtr<IHTMLElement> Page::Element(const wchar_t* id) const {
  ComPtr<IHTMLElement> element;
  As<IHTMLDocument3>()->getElementById(Bstr(id).get(), &element);
  return Demand(element);
}

void Run(const Page& page, const wchar_t* script) {
  ComPtr<IHTMLWindow2> window;
  page.document->get_parentWindow(&window);
  Variant nothing;
  Page::Demand(window)->execScript(Bstr(script).get(), Bstr(L"JScript").get(), nothing.put());
}

std::string Answer(HRESULT result) {
  static const std::map<HRESULT, std::string> kNames = {
      {S_OK, "S_OK"},
      {S_FALSE, "S_FALSE"},
      {E_INVALIDARG, "E_INVALIDARG"},
      {E_FAIL, "E_FAIL"},
      {E_ACCESSDENIED, "E_ACCESSDENIED"},
      {E_NOINTERFACE, "E_NOINTERFACE"},
      {E_NOTIMPL, "E_NOTIMPL"},
      {DISP_E_MEMBERNOTFOUND, "DISP_E_MEMBERNOTFOUND"},
      {DISP_E_UNKNOWNNAME, "DISP_E_UNKNOWNNAME"},
      {DISP_E_EXCEPTION, "DISP_E_EXCEPTION"},
      {CO_E_CLASSSTRING, "CO_E_CLASSSTRING"},
      {static_cast<HRESULT>(0x80020101), "SCRIPT_E_REPORTED"},
  };
  if (const auto found = kNames.find(result); found != kNames.end()) return found->second;
  char text[16];
  std::snprintf(text, sizeof text, "0x%08lx", static_cast<unsigned long>(result));
  return text;
}

std::string Answer(HRESULT result, const Bstr& text) { return With(result, Quoted(text)); }
std::string Answer(HRESULT result, LONG number) { return With(result, std::to_string(number)); }
std::string Answer(HRESULT result, const Variant& value) { return With(result, ValueText(value.get())); }
std::string Answer(HRESULT result, IUnknown* object) { return With(result, ObjectText(object)); }

}  // namespace quillmate::test
