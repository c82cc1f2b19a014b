// Collections read through their enumerator.
#include "capture/collection_items.h"

#include <array>

namespace quillmate::capture {
namespace {

constexpr ULONG kBatch = 64;

/// Takes the object out of a fetched value; any other kind of value is let go.
com::ComPtr<IDispatch> TakeObject(VARIANT& value) {
  com::ComPtr<IDispatch> object;
  if (value.vt == VT_DISPATCH) object = value.pdispVal;
  VariantClear(&value);
  return object;
}

}  // namespace

CollectionItems::CollectionItems(IHTMLElementCollection* collection) {
  com::ComPtr<IUnknown> items;
  if (collection != nullptr && SUCCEEDED(collection->get__newEnum(&items)))
    source_ = com::Query<IEnumVARIANT>(items);
}

com::ComPtr<IDispatch> CollectionItems::Next() {
  if (next_ == fetched_.size()) FetchMore();
  return next_ < fetched_.size() ? std::move(fetched_[next_++]) : nullptr;
}

void CollectionItems::FetchMore() {
  fetched_.clear();
  next_ = 0;
  if (source_ == nullptr) return;
  std::array<VARIANT, kBatch> values{};
  ULONG count = 0;
  if (FAILED(source_->Next(kBatch, values.data(), &count))) count = 0;
  for (ULONG i = 0; i < count; ++i) fetched_.push_back(TakeObject(values[i]));
  // A short batch was the last one, so the end need not be asked for.
  if (count < kBatch) source_.Reset();
}

}  // namespace quillmate::capture
