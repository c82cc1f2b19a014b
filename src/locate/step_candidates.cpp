#include "locate/step_candidates.h"

#include "com/bstr.h"
#include "com/call_failure.h"
#include "com/encoding.h"
#include "com/variant.h"

namespace quillmate {
namespace {

/// The answer of a call that gives its collection as IDispatch.
HRESULT AsCollection(HRESULT result, const com::ComPtr<IDispatch>& object,
                     IHTMLElementCollection** collection) {
  if (FAILED(result)) return result;
  if (object == nullptr) return E_FAIL;
  com::ComPtr<IHTMLElementCollection> typed;
  const HRESULT query = com::QueryKnown(object.Get(), typed);
  *collection = typed.Detach();
  return query;
}

HRESULT FromDocument(IHTMLDocument2* document, std::string_view name, IHTMLElementCollection** collection) {
  if (name == "*") return document->get_all(collection);
  com::ComPtr<IHTMLDocument3> searchable;
  const HRESULT result = com::QueryKnown(document, searchable);
  if (FAILED(result)) return result;
  return searchable->getElementsByTagName(com::Bstr(com::FromAnsi(name)).get(), collection);
}

HRESULT Descendants(IHTMLElement* element, std::string_view name, IHTMLElementCollection** collection) {
  if (name == "*") {
    com::ComPtr<IDispatch> all;
    const HRESULT result = element->get_all(&all);
    return AsCollection(result, all, collection);
  }
  com::ComPtr<IHTMLElement2> searchable;
  const HRESULT result = com::QueryKnown(element, searchable);
  if (FAILED(result)) return result;
  return searchable->getElementsByTagName(com::Bstr(com::FromAnsi(name)).get(), collection);
}

HRESULT Children(IHTMLElement* element, std::string_view name, IHTMLElementCollection** collection) {
  com::ComPtr<IDispatch> object;
  HRESULT result = element->get_children(&object);
  if (name == "*") return AsCollection(result, object, collection);
  com::ComPtr<IHTMLElementCollection> children;
  result = AsCollection(result, object, &children);
  if (FAILED(result)) return result;
  com::ComPtr<IDispatch> tagged;
  result = children->tags(com::Variant::Text(com::FromAnsi(name)).get(), &tagged);
  return AsCollection(result, tagged, collection);
}

}  // namespace

HRESULT CollectCandidates(IHTMLDocument2* document, const Context& context, std::string_view tag,
                          Candidates& candidates) {
  const size_t slashes = tag.starts_with("//") ? 2 : 1;
  if (!tag.starts_with('/')) return S_OK;
  const std::string_view name = tag.substr(slashes);
  candidates.one_tag = name != "*";
  if (context == nullptr) return FromDocument(document, name, &candidates.collection);
  return slashes == 2 ? Descendants(context.Get(), name, &candidates.collection)
                      : Children(context.Get(), name, &candidates.collection);
}

}  // namespace quillmate
