// Element collections.
#include "facts/fact.h"

namespace quillmate::test {
namespace {

ComPtr<IHTMLElementCollection> Children(const Page& page, const wchar_t* id) {
  ComPtr<IDispatch> children;
  page.Element(id)->get_children(&children);
  return Page::Demand(com::Query<IHTMLElementCollection>(children));
}

std::string Item(const Page& page, const Variant& name, const Variant& index) {
  ComPtr<IHTMLElementCollection> found;
  page.As<IHTMLDocument3>()->getElementsByTagName(Bstr(L"p").get(), &found);
  ComPtr<IDispatch> item;
  const HRESULT result = Page::Demand(found)->item(name.get(), index.get(), &item);
  return Answer(result, item.Get());
}

std::string ItemOfAll(const Page& page, const Variant& name, const Variant& index) {
  ComPtr<IHTMLElementCollection> all;
  page.document->get_all(&all);
  ComPtr<IDispatch> item;
  const HRESULT result = Page::Demand(all)->item(name.get(), index.get(), &item);
  return Answer(result, item.Get());
}

std::string Tags(const Page& page, const wchar_t* tag) {
  ComPtr<IDispatch> found;
  const HRESULT result = Children(page, L"kids")->tags(Variant::Text(tag).get(), &found);
  return Answer(result, found.Get());
}

/// Takes more than there is from an enumeration.
std::string Enumerate(const Page& page) {
  ComPtr<IUnknown> unknown;
  Children(page, L"pair")->get__newEnum(&unknown);
  const auto all = Page::Demand(com::Query<IEnumVARIANT>(unknown));
  VARIANT items[3] = {};
  ULONG fetched = 0;
  const HRESULT result = all->Next(3, items, &fetched);
  for (VARIANT& item : items) VariantClear(&item);
  return Answer(result) + " " + std::to_string(fetched);
}

const Fact kFacts[] = {
    {"dom.c:2917-48", kAll, [](const Page& page) { return Item(page, Variant::Int(0), {}); }, "<P#first>"},
    {"dom.c:2917-48", kAll, [](const Page& page) { return Item(page, Variant::Int(1), Variant::Int(0)); },
     "<P#last>"},
    {"dom.c:2919-48", kAll, [](const Page& page) { return Item(page, Variant::Int(2), {}); }, "NULL"},
    {"dom.c:2919-48", kAll, [](const Page& page) { return Item(page, Variant::Int(2'000'000'000), {}); },
     "NULL"},
    {"dom.c:2951-59", kTo8, [](const Page& page) { return Item(page, Variant::Int(-1), {}); },
     "E_INVALIDARG"},
    {"dom.c:2951-59", kFrom9, [](const Page& page) { return Item(page, Variant::Int(-1), {}); }, "NULL"},
    {"dom.c:6223-34", kAll, [](const Page& page) { return Item(page, Variant::Text(L"none"), {}); }, "NULL"},
    {"dom.c:6172-79", kAll, [](const Page& page) { return ItemOfAll(page, Variant::Text(L"kids"), {}); },
     "<DIV#kids>"},
    {"dom.c:6172-79", k5, [](const Page& page) { return ItemOfAll(page, Variant::Text(L"twice"), {}); },
     "[<I><U>]"},
    {"dom.c:6181-6206", k5,
     [](const Page& page) { return ItemOfAll(page, Variant::Text(L"twice"), Variant::Int(1)); }, "<U>"},
    {"dom.c:6181-6206", k5,
     [](const Page& page) { return ItemOfAll(page, Variant::Text(L"twice"), Variant::Int(2)); }, "NULL"},
    {"dom.c:10107-17", k5, [](const Page& page) { return ItemOfAll(page, Variant::Text(L"KIDS"), {}); },
     "<DIV#kids>"},
    {"dom.c:8808-11", kAll, [](const Page& page) { return Tags(page, L"table"); }, "[]"},
    {"dom.c:8808-11", kAll, [](const Page& page) { return Tags(page, L"b"); }, "[<B#second>]"},
    {"ff986081", kTo8, [](const Page& page) { return Answer(S_OK, Children(page, L"kids").Get()); },
     "[<P#first><!><B#second>]"},
    {"ff986081", kFrom9, [](const Page& page) { return Answer(S_OK, Children(page, L"kids").Get()); },
     "[<P#first><B#second>]"},
    {"dom.c:2860-2915", kAll, Enumerate, "S_FALSE 2"},
};

}  // namespace

std::span<const Fact> CollectionFacts() { return kFacts; }

}  // namespace quillmate::test
