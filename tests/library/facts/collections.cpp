// Element collections.
#include "facts/fact.h"

namespace quillmate::test {
namespace {

ComPtr<IHTMLElementCollection> Children(const Page& page, const wchar_t* id) {
  ComPtr<IDispatch> children;
  page.Element(id)->get_children(&children);
  return Page::Demand(com::Query<IHTMLElementCollection>(children));
}

std::string Item(const Page& page, const Variant& position, const Variant& index) {
  ComPtr<IHTMLElementCollection> found;
  page.As<IHTMLDocument3>()->getElementsByTagName(Bstr(L"p").get(), &found);
  ComPtr<IDispatch> item;
  const HRESULT result = Page::Demand(found)->item(position.get(), index.get(), &item);
  return Answer(result, item.Get());
}

std::string Tags(const Page& page, const wchar_t* tag) {
  ComPtr<IDispatch> found;
  const HRESULT result = Children(page, L"nest")->tags(Variant::Text(tag).get(), &found);
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
  std::string answer = Answer(result) + " " + std::to_string(fetched);
  for (VARIANT& item : items) {
    if (item.vt == VT_DISPATCH) answer += " " + Answer(S_OK, item.pdispVal);
    VariantClear(&item);
  }
  return answer;
}

const Fact kFacts[] = {
    {"item", kAll, [](const Page& page) { return Item(page, Variant::Int(0), {}); }, "<P#first>"},
    {"item", kAll, [](const Page& page) { return Item(page, Variant::Int(1), Variant::Int(0)); }, "<P#last>"},
    {"item-beyond", kAll, [](const Page& page) { return Item(page, Variant::Int(2), Variant::Int(0)); },
     "NULL"},
    {"item-beyond", kAll,
     [](const Page& page) { return Item(page, Variant::Int(2'000'000'000), Variant::Int(0)); }, "NULL"},
    {"item-negative", kTo8, [](const Page& page) { return Item(page, Variant::Int(-1), {}); },
     "E_INVALIDARG"},
    {"item-negative", kFrom9, [](const Page& page) { return Item(page, Variant::Int(-1), {}); }, "NULL"},
    {"tags-none", kAll, [](const Page& page) { return Tags(page, L"table"); }, "[]"},
    {"tags", kAll, [](const Page& page) { return Tags(page, L"DiV"); }, "[<DIV#nested>]"},
    {"tags-direct", kAll, [](const Page& page) { return Tags(page, L"i"); }, "[]"},
    {"children", kTo8, [](const Page& page) { return Answer(S_OK, Children(page, L"kids").Get()); },
     "[<P#first><!><B#second>]"},
    {"children", kFrom9, [](const Page& page) { return Answer(S_OK, Children(page, L"kids").Get()); },
     "[<P#first><B#second>]"},
    {"enumeration", kAll, Enumerate, "S_FALSE 2 <I> <U>"},
};

}  // namespace

std::span<const Fact> CollectionFacts() { return kFacts; }

}  // namespace quillmate::test
