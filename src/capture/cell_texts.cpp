#include "capture/cell_texts.h"

#include "com/encoding.h"
#include "com/owned.h"
#include "locate/collection_items.h"

namespace quillmate {
namespace {

using Cells = com::ComPtr<IHTMLElementCollection>;

Cells CellsOfTag(IHTMLElement2* table, const wchar_t* tag) {
  Cells cells;
  if (table != nullptr) table->getElementsByTagName(com::Bstr(tag).get(), &cells);
  return cells;
}

std::optional<DISPID> AskNumber(IDispatch* cell) {
  wchar_t name[] = L"innerText";
  LPOLESTR names[] = {name};
  DISPID number = DISPID_UNKNOWN;
  if (FAILED(cell->GetIDsOfNames(IID_NULL, names, 1, LOCALE_INVARIANT, &number))) return std::nullopt;
  return number;
}

HRESULT GetMember(IDispatch* cell, DISPID number, com::Variant& value) {
  DISPPARAMS none{};
  const HRESULT result = cell->Invoke(number, IID_NULL, LOCALE_INVARIANT, DISPATCH_PROPERTYGET, &none,
                                      value.put(), nullptr, nullptr);
  return SUCCEEDED(result) && value.type() != VT_BSTR ? DISP_E_MEMBERNOTFOUND : result;
}

/// The number that cells of a kind have, as the first of them says.
struct KindNumber {
  bool is_known = false;
  /// Nothing when there is no cell of the kind.
  std::optional<DISPID> number;
};

KindNumber AskKind(IHTMLElementCollection* cells) {
  com::ComPtr<IDispatch> first;
  if (cells == nullptr || FAILED(cells->item(com::Variant::Int(0).get(), com::Variant::Int(0).get(), &first)))
    return {};
  if (first == nullptr) return {true, std::nullopt};
  const auto number = AskNumber(first.Get());
  return {number.has_value(), number};
}

}  // namespace

CellTexts::CellTexts(IHTMLTable* table) {
  const auto searchable = com::Query<IHTMLElement2>(table);
  const Cells headings = CellsOfTag(searchable.Get(), L"TH");
  const KindNumber heading = AskKind(headings.Get());
  const KindNumber data = AskKind(CellsOfTag(searchable.Get(), L"TD").Get());
  ask_each_ = !heading.is_known || !data.is_known;
  heading_number_ = heading.number;
  data_number_ = data.number;
  if (ask_each_ || !heading_number_ || !data_number_ || *heading_number_ == *data_number_) return;
  CollectionItems items(headings, CollectionItems::Need::kAll);
  com::ComPtr<IDispatch> cell;
  while (items.Next(cell) == S_OK) {
    headings_.push_back(com::Query<IUnknown>(cell));
    heading_identities_.insert(headings_.back().Get());
  }
}

std::optional<DISPID> CellTexts::NumberFor(IDispatch* cell) const {
  if (ask_each_) return std::nullopt;
  if (!data_number_) return heading_number_;
  if (heading_identities_.empty()) return data_number_;
  return heading_identities_.contains(com::Query<IUnknown>(cell).Get()) ? heading_number_ : data_number_;
}

std::string CellTexts::Read(IDispatch* cell) const {
  if (cell == nullptr) return {};
  com::Variant text;
  const auto number = NumberFor(cell);
  HRESULT result = number ? GetMember(cell, *number, text) : DISP_E_MEMBERNOTFOUND;
  if (result == DISP_E_MEMBERNOTFOUND) {
    const auto own = AskNumber(cell);
    result = own ? GetMember(cell, *own, text) : E_FAIL;
  }
  if (FAILED(result)) return {};
  return com::ToUtf8(std::wstring_view(text.get().bstrVal, SysStringLen(text.get().bstrVal)));
}

}  // namespace quillmate
