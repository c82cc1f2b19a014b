// The items of a page's collection, fetched many at a time: asked one by one, each would cost a call of its
// own.
#pragma once

#include <windows.h>
#include <mshtml.h>
#include <vector>

#include "com/com_ptr.h"

namespace quillmate::capture {

class CollectionItems {
 public:
  /// @param collection may be null, which is an empty collection.
  explicit CollectionItems(IHTMLElementCollection* collection);

  /// @return the next item in the collection's order; null when there is no more.
  com::ComPtr<IDispatch> Next();

 private:
  void FetchMore();

  com::ComPtr<IEnumVARIANT> source_;
  std::vector<com::ComPtr<IDispatch>> fetched_;
  size_t next_ = 0;
};

}  // namespace quillmate::capture
