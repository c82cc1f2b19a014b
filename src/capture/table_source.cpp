#include "capture/table_source.h"

#include <new>
#include <string>
#include <vector>

#include "com/bstr.h"
#include "com/encoding.h"
#include "com/variant.h"
#include "locate/collection_items.h"

namespace quillmate {
namespace {

constexpr LONG kMaxCellsPerRow = 50'000;

/// Takes ownership of a fresh tree. @throws std::bad_alloc when there was no memory for it.
com::JsonPtr Owned(cJSON* item) {
  if (item == nullptr) throw std::bad_alloc();
  return com::JsonPtr(item);
}

void Add(const com::JsonPtr& array, com::JsonPtr item) { cJSON_AddItemToArray(array.get(), item.release()); }

bool HasTag(IHTMLElement* element, std::wstring_view tag) {
  com::Bstr actual;
  return SUCCEEDED(element->get_tagName(actual.put())) && actual.view() == tag;
}

bool HasExactClass(IHTMLElement* element, std::wstring_view class_name) {
  com::Bstr actual;
  return SUCCEEDED(element->get_className(actual.put())) && actual.view() == class_name;
}

com::ComPtr<IHTMLElement> FirstOfClass(IHTMLElement* element, const wchar_t* class_name) {
  const auto searchable = com::Query<IHTMLElement6>(element);
  com::ComPtr<IHTMLElementCollection> found;
  com::ComPtr<IDispatch> first;
  if (searchable == nullptr ||
      FAILED(searchable->getElementsByClassName(com::Bstr(class_name).get(), &found)) || found == nullptr ||
      FAILED(found->item(com::Variant::Int(0).get(), com::Variant::Int(0).get(), &first))) {
    return {};
  }
  return com::Query<IHTMLElement>(first);
}

com::ComPtr<IHTMLTable> AsTable(IHTMLElement* element) {
  return element != nullptr && HasTag(element, L"TABLE") ? com::Query<IHTMLTable>(element) : nullptr;
}

/// The table inside the first part of a split grid that has the given class.
com::ComPtr<IHTMLTable> TableOfPart(IHTMLElement* grid, const wchar_t* part_class) {
  const auto part = FirstOfClass(grid, part_class);
  return part != nullptr ? AsTable(FirstOfClass(part.Get(), L"layui-table").Get()) : nullptr;
}

std::optional<TableSource> AsSplitGrid(IHTMLElement* element) {
  if (!HasExactClass(element, L"layui-table-box")) return std::nullopt;
  auto body = TableOfPart(element, L"layui-table-body");
  if (body == nullptr) return std::nullopt;
  return TableSource{std::move(body), TableOfPart(element, L"layui-table-header")};
}

std::optional<TableSource> AsSource(IHTMLElement* element) {
  com::Bstr tag;
  if (FAILED(element->get_tagName(tag.put()))) return std::nullopt;
  if (tag.view() == L"DIV") return AsSplitGrid(element);
  auto table = tag.view() == L"TABLE" ? com::Query<IHTMLTable>(element) : nullptr;
  return table != nullptr ? std::optional(TableSource{std::move(table), nullptr}) : std::nullopt;
}

/// Uses IDispatch, which we already hold; creating an IHTMLElement proxy per cell costs more than reading the
/// text. The member's number is asked of each cell, as it may differ between kinds of element.
std::string CellText(IDispatch* cell) {
  wchar_t name[] = L"innerText";
  LPOLESTR names[] = {name};
  DISPID member = DISPID_UNKNOWN;
  com::Variant text;
  DISPPARAMS none{};
  if (cell == nullptr || FAILED(cell->GetIDsOfNames(IID_NULL, names, 1, LOCALE_INVARIANT, &member)) ||
      FAILED(cell->Invoke(member, IID_NULL, LOCALE_INVARIANT, DISPATCH_PROPERTYGET, &none, text.put(),
                          nullptr, nullptr)) ||
      text.type() != VT_BSTR) {
    return {};
  }
  return com::ToUtf8(std::wstring_view(text.get().bstrVal, SysStringLen(text.get().bstrVal)));
}

com::ComPtr<IDispatch> NextOf(CollectionItems& items) {
  com::ComPtr<IDispatch> item;
  items.Next(item);
  return item;
}

struct RowCells {
  com::ComPtr<IHTMLElementCollection> cells;
  LONG count = 0;
};

std::optional<RowCells> CellsOf(IDispatch* item) {
  const auto row = com::Query<IHTMLTableRow>(item);
  RowCells result;
  if (row == nullptr || FAILED(row->get_cells(&result.cells)) || result.cells == nullptr ||
      FAILED(result.cells->get_length(&result.count))) {
    return std::nullopt;
  }
  return result;
}

/// @return the row's texts; null when the row cannot be read or is too long.
com::JsonPtr ReadRow(IDispatch* item) {
  const auto row = CellsOf(item);
  if (!row || row->count > kMaxCellsPerRow) return {};
  com::JsonPtr texts = Owned(cJSON_CreateArray());
  CollectionItems cells(row->cells, CollectionItems::Need::kAll);
  for (LONG i = 0; i < row->count; ++i) {
    Add(texts, Owned(cJSON_CreateString(CellText(NextOf(cells).Get()).c_str())));
  }
  return texts;
}

com::ComPtr<IHTMLElementCollection> RowsOf(IHTMLTable* table) {
  com::ComPtr<IHTMLElementCollection> rows;
  table->get_rows(&rows);
  return rows;
}

com::JsonPtr ReadFirstRow(IHTMLTable* table) {
  CollectionItems rows(RowsOf(table), CollectionItems::Need::kOne);
  return ReadRow(NextOf(rows).Get());
}

/// @return the numbers of the columns; null when there are none.
com::JsonPtr ColumnNumbers(LONG count) {
  if (count < 1) return {};
  com::JsonPtr numbers = Owned(cJSON_CreateArray());
  for (LONG i = 0; i < count; ++i) Add(numbers, Owned(cJSON_CreateNumber(i)));
  return numbers;
}

}  // namespace

std::optional<TableSource> FindTable(com::ComPtr<IHTMLElement> element) {
  while (element != nullptr) {
    if (auto found = AsSource(element.Get())) return found;
    com::ComPtr<IHTMLElement> parent;
    element->get_parentElement(&parent);
    element = std::move(parent);
  }
  return std::nullopt;
}

com::JsonPtr ReadTable(const TableSource& table) {
  com::JsonPtr result = Owned(cJSON_CreateArray());
  CollectionItems rows(RowsOf(table.body.Get()), CollectionItems::Need::kAll);
  com::ComPtr<IDispatch> row = NextOf(rows);
  com::JsonPtr header;
  if (table.header != nullptr) {
    header = ReadFirstRow(table.header.Get());
  } else if (const auto first = CellsOf(row.Get())) {
    header = ColumnNumbers(first->count);
  }
  if (header != nullptr) Add(result, std::move(header));
  for (; row != nullptr; row = NextOf(rows)) {
    if (com::JsonPtr texts = ReadRow(row.Get())) Add(result, std::move(texts));
  }
  return result;
}

}  // namespace quillmate
