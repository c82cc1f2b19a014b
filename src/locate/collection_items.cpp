#include "locate/collection_items.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

#include "com/owned.h"

namespace quillmate {
namespace {

constexpr ULONG kFirstBatch = 8;
constexpr ULONG kLargestBatch = 64;
constexpr LONG kTheRest = std::numeric_limits<LONG>::max();

com::ComPtr<IDispatch> TakeObject(VARIANT& value) {
  com::ComPtr<IDispatch> object;
  if (value.vt == VT_DISPATCH) object = value.pdispVal;
  VariantClear(&value);
  return object;
}

}  // namespace

CollectionItems::CollectionItems(com::ComPtr<IHTMLElementCollection> collection, Need need)
    : collection_(std::move(collection)),
      batch_size_(need == Need::kAll ? kLargestBatch : kFirstBatch),
      singles_(need == Need::kOne ? 1 : 0) {}

HRESULT CollectionItems::Next(com::ComPtr<IDispatch>& item) {
  item.Reset();
  if (collection_ == nullptr) return S_FALSE;
  if (taken_ == batch_.size()) {
    if (last_batch_) return S_FALSE;
    if (singles_ > 0 || FAILED(FetchBatch())) return FetchSingle(item);
    if (batch_.empty()) return S_FALSE;
  }
  item = std::move(batch_[taken_++]);
  return S_OK;
}

HRESULT CollectionItems::FetchBatch() {
  batch_.clear();
  taken_ = 0;
  std::array<VARIANT, kLargestBatch> values{};
  ULONG count = 0;
  HRESULT result = source_ != nullptr ? S_OK : OpenEnumerator();
  if (SUCCEEDED(result)) result = source_->Next(batch_size_, values.data(), &count);
  if (FAILED(result)) {
    source_.Reset();
    singles_ = kTheRest;
    return result;
  }
  for (ULONG i = 0; i < count; ++i) batch_.push_back(TakeObject(values[i]));
  position_ += static_cast<LONG>(count);
  // A short batch is the last one, so the end need not be asked for.
  last_batch_ = count < batch_size_;
  batch_size_ = std::min(batch_size_ * 2, kLargestBatch);
  return S_OK;
}

HRESULT CollectionItems::OpenEnumerator() {
  com::ComPtr<IUnknown> items;
  const HRESULT result = collection_->get__newEnum(&items);
  if (FAILED(result)) return result;
  source_ = com::Query<IEnumVARIANT>(items);
  if (source_ == nullptr) return E_NOINTERFACE;
  return position_ > 0 ? source_->Skip(static_cast<ULONG>(position_)) : S_OK;
}

HRESULT CollectionItems::FetchSingle(com::ComPtr<IDispatch>& item) {
  if (singles_ != kTheRest) --singles_;
  const HRESULT result =
      collection_->item(com::Variant::Int(position_++).get(), com::Variant::Int(0).get(), &item);
  if (FAILED(result)) return result;
  // Past its end a collection returns null.
  last_batch_ = item == nullptr;
  return last_batch_ ? S_FALSE : S_OK;
}

}  // namespace quillmate
