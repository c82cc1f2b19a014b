#include "capture/table_source.h"

#include <new>
#include <string>
#include <utility>

#include "capture/cell_texts.h"
#include "com/owned.h"
#include "locate/collection_items.h"

namespace quillmate {
namespace {

using Collection = com::ComPtr<IHTMLElementCollection>;

constexpr LONG kMaxCellsPerRow = 50'000;

void Require(HRESULT result) {
  if (FAILED(result)) throw TableUnreadable();
}

/// A refused call for an interface looks like an interface that is not there, so both end the search: a table
/// further out is not the one that was meant.
template <class T>
com::ComPtr<T> RequireInterface(IHTMLElement* element) {
  auto result = com::Query<T>(element);
  if (result == nullptr) throw TableUnreadable();
  return result;
}

/// Takes ownership of a fresh tree. @throws std::bad_alloc when there was no memory for it.
com::JsonPtr Owned(cJSON* item) {
  if (item == nullptr) throw std::bad_alloc();
  return com::JsonPtr(item);
}

void Add(const com::JsonPtr& array, com::JsonPtr item) { cJSON_AddItemToArray(array.get(), item.release()); }

bool HasTag(IHTMLElement* element, std::wstring_view tag) {
  com::Bstr actual;
  Require(element->get_tagName(actual.put()));
  return actual.view() == tag;
}

bool HasExactClass(IHTMLElement* element, std::wstring_view class_name) {
  com::Bstr actual;
  Require(element->get_className(actual.put()));
  return actual.view() == class_name;
}

com::ComPtr<IHTMLElement> FirstOfClass(IHTMLElement* element, const wchar_t* class_name) {
  const auto searchable = RequireInterface<IHTMLElement6>(element);
  Collection found;
  com::ComPtr<IDispatch> first;
  com::ComPtr<IHTMLElement> result;
  Require(searchable->getElementsByClassName(com::Bstr(class_name).get(), &found));
  if (found == nullptr) return result;
  Require(found->item(com::Variant::Int(0).get(), com::Variant::Int(0).get(), &first));
  if (first != nullptr) Require(first.As(&result));
  return result;
}

com::ComPtr<IHTMLTable> AsTable(IHTMLElement* element) {
  return element != nullptr && HasTag(element, L"TABLE") ? RequireInterface<IHTMLTable>(element) : nullptr;
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
  Require(element->get_tagName(tag.put()));
  if (tag.view() == L"DIV") return AsSplitGrid(element);
  if (tag.view() != L"TABLE") return std::nullopt;
  return TableSource{RequireInterface<IHTMLTable>(element), nullptr};
}

/// Goes through a collection to its end and over the items that cannot be had. A page that has gone refuses
/// every item, so the collection's length is asked once one is refused; one that hangs is not asked again.
class PatientItems {
 public:
  explicit PatientItems(Collection collection)
      : collection_(collection), items_(std::move(collection), CollectionItems::Need::kAll) {}

  /// @param item null when it cannot be had. @return false at the end.
  bool Next(com::ComPtr<IDispatch>& item) {
    const HRESULT result = items_.Next(item);
    ++position_;
    if (result == S_FALSE || result == RPC_E_CALL_CANCELED) return false;
    if (FAILED(result) && length_ < 0 && FAILED(collection_->get_length(&length_))) return false;
    return SUCCEEDED(result) || position_ <= length_;
  }

 private:
  Collection collection_;
  CollectionItems items_;
  LONG position_ = 0;
  LONG length_ = -1;
};

struct Row {
  /// How many cells it has; 0 when it cannot be read.
  LONG count = 0;
  /// Its texts; null when it cannot be read or is too long.
  com::JsonPtr texts;
};

/// Whether a row has more cells than are read. Rows that one batch holds are not asked for their length.
bool IsTooLong(IHTMLElementCollection* cells, LONG read, LONG& count) {
  constexpr LONG kWorthAsking = 64;
  if (read != kWorthAsking) return false;
  return FAILED(cells->get_length(&count)) || count > kMaxCellsPerRow;
}

Row ReadRow(IDispatch* item, const CellTexts& texts_of) {
  const auto row = com::Query<IHTMLTableRow>(item);
  Collection cells;
  if (row == nullptr || FAILED(row->get_cells(&cells)) || cells == nullptr) return {};
  Row result{0, Owned(cJSON_CreateArray())};
  PatientItems items(cells);
  for (com::ComPtr<IDispatch> cell; items.Next(cell);) {
    LONG count = 0;
    if (IsTooLong(cells.Get(), result.count, count)) return {count, nullptr};
    Add(result.texts, Owned(cJSON_CreateString(texts_of.Read(cell.Get()).c_str())));
    ++result.count;
  }
  return result;
}

Collection RowsOf(IHTMLTable* table) {
  Collection rows;
  Require(table->get_rows(&rows));
  if (rows == nullptr) throw TableUnreadable();
  return rows;
}

com::JsonPtr ReadFirstRow(IHTMLTable* table) {
  PatientItems rows(RowsOf(table));
  com::ComPtr<IDispatch> row;
  return rows.Next(row) ? ReadRow(row.Get(), CellTexts(table)).texts : nullptr;
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
    Require(element->get_parentElement(&parent));
    element = std::move(parent);
  }
  return std::nullopt;
}

com::JsonPtr ReadTable(const TableSource& table) {
  com::JsonPtr result = Owned(cJSON_CreateArray());
  PatientItems rows(RowsOf(table.body.Get()));
  const CellTexts texts(table.body.Get());
  if (table.header != nullptr) {
    if (auto header = ReadFirstRow(table.header.Get())) Add(result, std::move(header));
  }
  bool is_first = true;
  for (com::ComPtr<IDispatch> item; rows.Next(item);) {
    Row row = ReadRow(item.Get(), texts);
    const bool counts_columns = std::exchange(is_first, false) && table.header == nullptr;
    if (auto numbers = counts_columns ? ColumnNumbers(row.count) : nullptr) Add(result, std::move(numbers));
    if (row.texts != nullptr) Add(result, std::move(row.texts));
  }
  return result;
}

}  // namespace quillmate
