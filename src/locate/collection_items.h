// The items of a page's collection, fetched many at a time: one by one, each would cost a call of its own.
#pragma once

#include <windows.h>
#include <mshtml.h>
#include <vector>

#include "com/owned.h"

namespace quillmate {

/// Reads a collection in its order through its enumerator. When the collection refuses a batch, the rest is
/// read item by item, so that one refused call costs one item.
class CollectionItems {
 public:
  /// How many items a reader will probably take: a first batch that is larger than the need costs a release
  /// for each item that nobody wanted.
  enum class Need { kOne, kSome, kAll };

  /// @param collection may be null, which is an empty collection.
  CollectionItems(com::ComPtr<IHTMLElementCollection> collection, Need need);

  /// @param item the next item; null when it is no object.
  /// @return S_OK; S_FALSE at the end; else why this item cannot be had. The next call goes on behind it.
  HRESULT Next(com::ComPtr<IDispatch>& item);

 private:
  HRESULT FetchBatch();
  HRESULT OpenEnumerator();
  HRESULT FetchSingle(com::ComPtr<IDispatch>& item);

  com::ComPtr<IHTMLElementCollection> collection_;
  com::ComPtr<IEnumVARIANT> source_;
  std::vector<com::ComPtr<IDispatch>> batch_;
  size_t taken_ = 0;
  /// The place of the next item that is not fetched yet.
  LONG position_ = 0;
  ULONG batch_size_;
  /// How many items to ask for one by one before the next batch.
  LONG singles_;
  bool last_batch_ = false;
};

}  // namespace quillmate
