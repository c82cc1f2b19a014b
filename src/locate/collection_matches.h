// The elements of a collection that a selector takes, fetched one at a time.
#pragma once

#include <windows.h>
#include <mshtml.h>

#include "com/com_ptr.h"
#include "locate/locator_syntax.h"

namespace quillmate::locate {

/// Whether a predicate holds for an element.
bool MatchPredicate(IHTMLElement* element, const Predicate& predicate);

/// Walks a collection in its order. Nothing is fetched ahead, so that a search which stops early saves its
/// calls.
class CollectionMatches {
 public:
  /// @param collection may be null, which is an empty collection.
  CollectionMatches(com::ComPtr<IHTMLElementCollection> collection, Selector selector)
      : collection_(std::move(collection)), selector_(std::move(selector)) {}

  /// @return the next match, null when there is no more.
  com::ComPtr<IHTMLElement> Next();

  /// Whether a call failed, so that the walk ended before the collection did: what it gave is not to be used.
  bool IsCutShort() const { return cut_short_; }

 private:
  com::ComPtr<IHTMLElement> ItemAt(LONG index);

  com::ComPtr<IHTMLElementCollection> collection_;
  Selector selector_;
  LONG next_ = 0;
  bool cut_short_ = false;
};

}  // namespace quillmate::locate
