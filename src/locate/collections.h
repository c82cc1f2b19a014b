// Two ways through a page's collection. A search that stops early asks for one item at a time, so that it
// pays for no more; a reader of the whole collection fetches items in batches, because asked one by one each
// item costs a call.
#pragma once

#include <windows.h>
#include <mshtml.h>
#include <vector>

#include "com/com_ptr.h"
#include "locate/locator_syntax.h"

namespace quillmate {

/// Whether a predicate holds for an element.
bool MatchPredicate(IHTMLElement* element, const Predicate& predicate);

/// The elements of a collection that a selector takes, in the collection's order, fetched one at a time.
class CollectionMatches {
 public:
  /// @param collection may be null, which is an empty collection.
  CollectionMatches(com::ComPtr<IHTMLElementCollection> collection, Selector selector)
      : collection_(std::move(collection)), selector_(std::move(selector)) {}

  /// @return the next match, null when there is no more.
  com::ComPtr<IHTMLElement> Next();
  /// True if a call failed before the end of the collection. Discard the matches in that case.
  bool IsCutShort() const { return cut_short_; }

 private:
  com::ComPtr<IHTMLElement> ItemAt(LONG index);

  com::ComPtr<IHTMLElementCollection> collection_;
  Selector selector_;
  LONG next_ = 0;
  bool cut_short_ = false;
};

/// All items of a collection, in its order, fetched many at a time.
class CollectionItems {
 public:
  /// @param collection may be null, which is an empty collection.
  explicit CollectionItems(IHTMLElementCollection* collection);
  /// @return the next item; null when there is no more.
  com::ComPtr<IDispatch> Next();

 private:
  void FetchMore();

  com::ComPtr<IEnumVARIANT> source_;
  std::vector<com::ComPtr<IDispatch>> fetched_;
  size_t next_ = 0;
};

}  // namespace quillmate
