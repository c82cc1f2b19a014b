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

/// A text area's value stays out of its default.
std::string TextAreaDefault(const Page& page) {
  const auto area = page.Element<IHTMLTextAreaElement>(L"area");
  Bstr empty;
  Bstr standard;
  HRESULT result = area->get_value(empty.put());
  area->put_value(Bstr(L"set").get());
  area->get_defaultValue(standard.put());
  area->put_value(nullptr);
  return Answer(result, empty) + " " + Answer(S_OK, standard);
}

std::string WriteValueAttribute(const Page& page) {
  page.Element(L"written")->setAttribute(Bstr(L"value").get(), Variant::Text(L"second").get(), 0);
  return Value(page, L"written");
}

std::string SelectByValue(const Page& page) {
  const auto list = page.Element<IHTMLSelectElement>(L"list");
  LONG selected = -1;
  // Without a value attribute an option's text is its value only in newer modes, so it is given one.
  ComPtr<IDispatch> item;
  list->item(Variant::Int(1).get(), Variant::Int(1).get(), &item);
  Page::Demand(com::Query<IHTMLOptionElement>(item))->put_value(Bstr(L"v2").get());
  list->put_value(Bstr(L"v2").get());
  const HRESULT result = list->get_selectedIndex(&selected);
  list->put_selectedIndex(0);
  return Answer(result, selected);
}

/// Checks a box by program, which the page does not hear of.
std::string Check(const Page& page) {
  const auto box = page.Element<IHTMLInputElement>(L"box");
  VARIANT_BOOL checked = VARIANT_FALSE;
  Bstr title;
  box->put_checked(VARIANT_TRUE);
  const HRESULT result = box->get_checked(&checked);
  page.Element(L"box")->get_title(title.put());
  return Answer(result, Variant::Bool(checked != VARIANT_FALSE)) + " " + Answer(S_OK, title);
}

ComPtr<IHTMLElementCollection> Rows(const Page& page, const wchar_t* table = L"table") {
  ComPtr<IHTMLElementCollection> rows;
  page.Element<IHTMLTable>(table)->get_rows(&rows);
  return Page::Demand(rows);
}

std::string Cells(const Page& page) {
  ComPtr<IDispatch> row;
  ComPtr<IHTMLElementCollection> cells;
  Rows(page)->item(Variant::Int(0).get(), Variant().get(), &row);
  const HRESULT result = Page::Demand(com::Query<IHTMLTableRow>(row))->get_cells(&cells);
  return Answer(result, cells.Get());
}

/// What stands between a table and its rows where the source has nothing.
std::string SectionOfRow(const Page& page) {
  ComPtr<IHTMLElement> section;
  const HRESULT result = page.Element(L"o1")->get_parentElement(&section);
  return Answer(result, section.Get());
}

const Fact kFacts[] = {
    {"dom.c:10368", kAll, [](const Page& page) { return Value(page, L"field"); }, "NULL"},
    {"dom.c:11281-86", kAll, [](const Page& page) { return Value(page, L"typed"); }, "'now'"},
    {"dom.c:11281-86", kAll, DefaultAfterPut, "NULL"},
    {"dom.c:11373-92", kAll, TextAreaDefault, "NULL NULL"},
    {"Sizzle Use defaultValue in place of getAttribute(value)", kTo8, WriteValueAttribute, "'second'"},
    {"dom.c:6282-88", kAll, SelectByValue, "1"},
    {"aa752779", kAll, Check, "VT_BOOL true NULL"},
    {"dom.c:6313-45", kAll, [](const Page& page) { return OptionItem(page, 1); }, "<OPTION>"},
    {"dom.c:6313-45", kAll, [](const Page& page) { return OptionItem(page, 2); }, "NULL"},
    {"dom.c:6313-45", kAll, [](const Page& page) { return OptionItem(page, -1); }, "E_INVALIDARG"},
    {"aa752779", kAll, ChangeEventsAfterSelect, "1 NULL"},
    {"ff986081", kTo8, [](const Page& page) { return Answer(S_OK, Rows(page).Get()); },
     "[<TR#b1><TR#h><TR#b2>]"},
    {"ff986081", kFrom9, [](const Page& page) { return Answer(S_OK, Rows(page).Get()); },
     "[<TR#h><TR#b1><TR#b2>]"},
    {"dom.c:9209-49", kAll, [](const Page& page) { return Answer(S_OK, Rows(page, L"outer").Get()); },
     "[<TR#o1>]"},
    {"ms537490", kAll, SectionOfRow, "<TBODY>"},
    {"dom.c:9209-49", kTo8, Cells, "[<TD#c1><TH#c2>]"},
    {"dom.c:9209-49", kFrom9, Cells, "[<TH>]"},
};

}  // namespace

std::span<const Fact> ControlFacts() { return kFacts; }

}  // namespace quillmate::test
