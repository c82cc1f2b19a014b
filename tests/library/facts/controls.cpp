// Form controls and tables.
#include "facts/fact.h"

namespace quillmate::test {
namespace {

std::string Value(const Page& page, const wchar_t* id) {
  return Text(page.Element<IHTMLInputElement>(id), &IHTMLInputElement::get_value);
}

std::string Title(const Page& page, const wchar_t* id) {
  return Text(page.Element(id), &IHTMLElement::get_title);
}

/// Sets a value, and reads the default, which is another thing, and the change events that the page counted.
std::string DefaultAndEventsAfterPut(const Page& page) {
  const auto input = page.Element<IHTMLInputElement>(L"field");
  input->put_value(Bstr(L"set").get());
  const std::string answer = Text(input, &IHTMLInputElement::get_defaultValue) + " " + Title(page, L"field");
  input->put_value(nullptr);
  return answer;
}

/// A text area's value stays out of its default.
std::string TextArea(const Page& page) {
  const auto area = page.Element<IHTMLTextAreaElement>(L"area");
  const std::string empty = Text(area, &IHTMLTextAreaElement::get_value);
  area->put_value(Bstr(L"set").get());
  const std::string answer = empty + " " + Text(area, &IHTMLTextAreaElement::get_value) + " " +
                             Text(area, &IHTMLTextAreaElement::get_defaultValue);
  area->put_value(nullptr);
  return answer;
}

std::string TextOfTextArea(const Page& page) {
  const auto area = page.Element(L"area");
  area->put_innerText(Bstr(L"shown").get());
  const std::string answer =
      Text(page.Element<IHTMLTextAreaElement>(L"area"), &IHTMLTextAreaElement::get_value);
  area->put_innerText(nullptr);
  return answer;
}

std::string WriteValueAttribute(const Page& page, const wchar_t* id) {
  page.Element(id)->setAttribute(Bstr(L"value").get(), Variant::Text(L"second").get(), 0);
  return Value(page, id);
}

std::string PutFile(const Page& page) {
  page.Element<IHTMLInputElement>(L"file")->put_value(Bstr(L"c:\\x.txt").get());
  return Value(page, L"file");
}

std::string ButtonValue(const Page& page) {
  return Text(page.Element<IHTMLButtonElement>(L"button"), &IHTMLButtonElement::get_value);
}

ComPtr<IDispatch> OptionItem(const Page& page, LONG position, HRESULT* result = nullptr) {
  ComPtr<IDispatch> item;
  const Variant index = Variant::Int(position);
  const HRESULT answer = page.Element<IHTMLSelectElement>(L"list")->item(index.get(), index.get(), &item);
  if (result != nullptr) *result = answer;
  return item;
}

std::string OptionAt(const Page& page, LONG position) {
  HRESULT result = E_FAIL;
  const auto item = OptionItem(page, position, &result);
  return Answer(result, item.Get());
}

ComPtr<IHTMLOptionElement> Option(const Page& page, LONG position) {
  return Page::Demand(com::Query<IHTMLOptionElement>(OptionItem(page, position)));
}

std::string OptionText(const Page& page, LONG position,
                       HRESULT (STDMETHODCALLTYPE IHTMLOptionElement::*get)(BSTR*)) {
  return Text(Option(page, position), get);
}

/// Selects an option by program, which the page does not hear of.
std::string SelectOption(const Page& page) {
  VARIANT_BOOL before = VARIANT_TRUE;
  VARIANT_BOOL after = VARIANT_FALSE;
  Option(page, 1)->get_selected(&before);
  const HRESULT result = Option(page, 1)->put_selected(VARIANT_TRUE);
  Option(page, 1)->get_selected(&after);
  Option(page, 0)->put_selected(VARIANT_TRUE);
  return Answer(result) + " " + std::to_string(before) + " " + std::to_string(after) + " " +
         Title(page, L"list");
}

std::string ListLength(const Page& page) {
  LONG length = 0;
  const HRESULT result = page.Element<IHTMLSelectElement>(L"list")->get_length(&length);
  return Answer(result, length);
}

std::string ListValue(const Page& page) {
  return Text(page.Element<IHTMLSelectElement>(L"valued"), &IHTMLSelectElement::get_value);
}

std::string HeardEvents(const Page& page) {
  const std::string heard = Title(page, L"valued");
  Run(page, L"document.getElementById('valued').title = ''");
  return heard;
}

std::string FireEvent(const Page& page) {
  VARIANT_BOOL proceed = VARIANT_FALSE;
  Variant no_event;
  const HRESULT result =
      page.Element<IHTMLElement3>(L"valued")->fireEvent(Bstr(L"onchange").get(), no_event.put(), &proceed);
  return Answer(result) + (proceed != VARIANT_FALSE ? " true " : " false ") + HeardEvents(page);
}

/// Raises an event as newer documents do it.
std::string DispatchEvent(const Page& page) {
  ComPtr<IDispatch> document;
  ComPtr<IDOMEvent> event;
  VARIANT_BOOL proceed = VARIANT_FALSE;
  page.Element(L"valued")->get_document(&document);
  Page::Demand(com::Query<IDocumentEvent>(document))->createEvent(Bstr(L"HTMLEvents").get(), &event);
  Page::Demand(event)->initEvent(Bstr(L"change").get(), VARIANT_TRUE, VARIANT_FALSE);
  const HRESULT result = page.Element<IEventTarget>(L"valued")->dispatchEvent(event.Get(), &proceed);
  return Answer(result) + (proceed != VARIANT_FALSE ? " true " : " false ") + HeardEvents(page);
}

ComPtr<IHTMLElementCollection> Rows(const Page& page, const wchar_t* table) {
  ComPtr<IHTMLElementCollection> rows;
  page.Element<IHTMLTable>(table)->get_rows(&rows);
  return Page::Demand(rows);
}

std::string RowsOf(const Page& page, const wchar_t* table) { return Answer(S_OK, Rows(page, table).Get()); }

std::string Cells(const Page& page) {
  ComPtr<IHTMLElementCollection> cells;
  const HRESULT result = page.Element<IHTMLTableRow>(L"b1")->get_cells(&cells);
  return Answer(result, cells.Get());
}

/// What stands between a table and its rows where the source has nothing.
std::string SectionOfRow(const Page& page) {
  ComPtr<IHTMLElement> section;
  const HRESULT result = page.Element(L"o1")->get_parentElement(&section);
  return Answer(result, section.Get());
}

std::string InputType(const Page& page) {
  return Text(page.Element<IHTMLInputElement>(L"seek"), &IHTMLInputElement::get_type);
}

const Fact kFacts[] = {
    {"input-type", kTo8 | k9, InputType, "'text'"},
    {"input-type", k10 | k11, InputType, "'search'"},
    {"empty-value", kAll, [](const Page& page) { return Value(page, L"field"); }, "NULL"},
    {"value", kAll, [](const Page& page) { return Value(page, L"typed"); }, "'now'"},
    {"put-value", kAll, DefaultAndEventsAfterPut, "NULL NULL"},
    {"put-value-file", kAll, PutFile, "NULL"},
    {"button-value", kAll, ButtonValue, "'b1'"},
    {"set-value-attribute", kTo8, [](const Page& page) { return WriteValueAttribute(page, L"typed"); },
     "'second'"},
    {"set-value-attribute", kFrom9, [](const Page& page) { return WriteValueAttribute(page, L"typed"); },
     "'now'"},
    {"set-value-attribute", kFrom9, [](const Page& page) { return WriteValueAttribute(page, L"fresh"); },
     "'second'"},
    {"text-area-value", kAll, TextArea, "NULL 'set' NULL"},
    {"text-area-text", kAll, TextOfTextArea, "'shown'"},
    {"text-area-lines", kTo8,
     [](const Page& page) {
       return Text(page.Element<IHTMLTextAreaElement>(L"lines"), &IHTMLTextAreaElement::get_value);
     },
     "'a\r\nb'"},
    {"list-length", kAll, ListLength, "2"},
    {"list-item", kAll, [](const Page& page) { return OptionAt(page, 1); }, "<OPTION>"},
    {"list-item", kAll, [](const Page& page) { return OptionAt(page, 2); }, "NULL"},
    {"list-item", kAll, [](const Page& page) { return OptionAt(page, -1); }, "E_INVALIDARG"},
    {"list-value", kAll, ListValue, "'v1'"},
    {"option-text", kAll, [](const Page& page) { return OptionText(page, 0, &IHTMLOptionElement::get_text); },
     "'opt1'"},
    {"option-value", kAll,
     [](const Page& page) { return OptionText(page, 1, &IHTMLOptionElement::get_value); }, "'two'"},
    {"option-selected", kAll, SelectOption, "S_OK 0 -1 NULL"},
    {"fire-event", kAll, FireEvent, "S_OK true 'change'"},
    {"dispatch-event", kFrom9, DispatchEvent, "S_OK true 'change'"},
    // Tables.
    {"table-rows", kTo8, [](const Page& page) { return RowsOf(page, L"table"); }, "[<TR#b1><TR#h><TR#b2>]"},
    {"table-rows", kFrom9, [](const Page& page) { return RowsOf(page, L"table"); }, "[<TR#h><TR#b1><TR#b2>]"},
    {"table-nested", kAll, [](const Page& page) { return RowsOf(page, L"outer"); }, "[<TR#o1>]"},
    {"table-body", kAll, SectionOfRow, "<TBODY>"},
    {"table-cells", kAll, Cells, "[<TD#c1><TH#c2>]"},
};

}  // namespace

std::span<const Fact> ControlFacts() { return kFacts; }

}  // namespace quillmate::test
