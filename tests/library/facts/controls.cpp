// Form controls and tables.
#include "facts/fact.h"

namespace quillmate::test {
namespace {

std::string Value(const Page& page, const wchar_t* id) {
  Bstr value;
  const HRESULT result = page.Element<IHTMLInputElement>(id)->get_value(value.put());
  return Answer(result, value);
}

/// Sets a value, and reads the default, which is another thing.
std::string DefaultAfterPut(const Page& page) {
  const auto input = page.Element<IHTMLInputElement>(L"field");
  Bstr value;
  input->put_value(Bstr(L"set").get());
  const HRESULT result = input->get_defaultValue(value.put());
  input->put_value(nullptr);
  return Answer(result, value);
}

std::string OptionItem(const Page& page, LONG index) {
  ComPtr<IDispatch> item;
  const Variant position = Variant::Int(index);
  const HRESULT result =
      page.Element<IHTMLSelectElement>(L"list")->item(position.get(), position.get(), &item);
  return Answer(result, item.Get());
}

/// Selects an option by program; the page counts its change events in the list's title.
std::string ChangeEventsAfterSelect(const Page& page) {
  const auto list = page.Element<IHTMLSelectElement>(L"list");
  LONG selected = -1;
  Bstr title;
  list->put_selectedIndex(1);
  list->get_selectedIndex(&selected);
  list->put_selectedIndex(0);
  const HRESULT result = page.Element(L"list")->get_title(title.put());
  return std::to_string(selected) + " " + Answer(result, title);
}

ComPtr<IHTMLElementCollection> Rows(const Page& page) {
  ComPtr<IHTMLElementCollection> rows;
  page.Element<IHTMLTable>(L"table")->get_rows(&rows);
  return Page::Demand(rows);
}

std::string Cells(const Page& page) {
  ComPtr<IDispatch> row;
  ComPtr<IHTMLElementCollection> cells;
  Rows(page)->item(Variant::Int(0).get(), Variant().get(), &row);
  const HRESULT result = Page::Demand(com::Query<IHTMLTableRow>(row))->get_cells(&cells);
  return Answer(result, cells.Get());
}

const Fact kFacts[] = {
    {"dom.c:10368", kAll, [](const Page& page) { return Value(page, L"field"); }, "NULL"},
    {"dom.c:11281-86", kAll, [](const Page& page) { return Value(page, L"typed"); }, "'now'"},
    {"dom.c:11281-86", kAll, DefaultAfterPut, "NULL"},
    {"dom.c:6313-45", kAll, [](const Page& page) { return OptionItem(page, 1); }, "<OPTION>"},
    {"dom.c:6313-45", kAll, [](const Page& page) { return OptionItem(page, 2); }, "NULL"},
    {"dom.c:6313-45", kAll, [](const Page& page) { return OptionItem(page, -1); }, "E_INVALIDARG"},
    {"aa752779", kAll, ChangeEventsAfterSelect, "1 NULL"},
    {"ff986081", kTo8, [](const Page& page) { return Answer(S_OK, Rows(page).Get()); },
     "[<TR#b1><TR#h><TR#b2>]"},
    {"ff986081", kFrom9, [](const Page& page) { return Answer(S_OK, Rows(page).Get()); },
     "[<TR#h><TR#b1><TR#b2>]"},
    {"dom.c:9209-49", kTo8, Cells, "[<TD#c1><TH#c2>]"},
    {"dom.c:9209-49", kFrom9, Cells, "[<TH>]"},
};

}  // namespace

std::span<const Fact> ControlFacts() { return kFacts; }

}  // namespace quillmate::test
