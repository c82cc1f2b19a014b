// The elements of a collection that a selector takes, tested with the fewest calls to the page.
#pragma once

#include <windows.h>
#include <mshtml.h>
#include <cstdint>
#include <optional>
#include <string>

#include "com/owned.h"
#include "locate/collection_items.h"
#include "locate/locator_syntax.h"

namespace quillmate {

/// Reads the one value that a predicate needs, late bound: the items of a collection arrive as IDispatch, and
/// to ask each for another interface would cost a call more.
class PredicateTest {
 public:
  /// @param one_kind whether the elements are all of one tag, so that the number of a member, which the page
  /// may give each kind of element, holds for all of them.
  PredicateTest(Predicate predicate, bool one_kind);

  /// @return S_OK when the predicate holds, S_FALSE when it does not, else the failure in transit that
  /// keeps the value unknown.
  HRESULT Holds(IDispatch* element);
  HRESULT Holds(IHTMLElement* element);

 private:
  HRESULT ReadLateBound(IDispatch* element, VARIANT* value);
  HRESULT MemberOf(IDispatch* element, DISPID& member);

  Predicate predicate_;
  bool one_kind_;
  DISPID member_ = DISPID_UNKNOWN;
};

/// How many matches a search is for. Each one costs calls to the page, so a search for the first stops there.
enum class Wanted { kFirst, kCount };

/// What a selector chooses from.
struct Candidates {
  /// May be null, which is an empty collection.
  com::ComPtr<IHTMLElementCollection> collection;
  /// Whether all of them have one tag.
  bool one_tag = false;
  /// When not empty, only elements of this tag count.
  std::string only_tag;
};

/// Walks a collection in its order.
class CollectionMatches {
 public:
  CollectionMatches(Candidates candidates, Selector selector, Wanted wanted);

  /// @return S_OK and the next match; S_FALSE when there is no more; else the failure that ends the walk:
  /// what it gave is not to be used.
  HRESULT Next(com::ComPtr<IHTMLElement>& match);

  /// Counts the matches, without fetching them where the collection's length tells.
  /// @return S_OK, or the failure that leaves the count unknown.
  HRESULT Count(std::int32_t& count);

 private:
  HRESULT TakePosition(LONG number, com::ComPtr<IDispatch>& item);
  HRESULT NextItem(com::ComPtr<IDispatch>& item);
  HRESULT IsMatch(IDispatch* item);

  Candidates candidates_;
  Selector selector_;
  CollectionItems items_;
  std::optional<PredicateTest> test_;
  bool position_taken_ = false;
};

/// Whether an element has a tag, as the tag collections of a page compare it.
/// @return S_OK, S_FALSE, or the failure that keeps the tag unknown.
HRESULT HasTag(IHTMLElement* element, std::string_view tag);

}  // namespace quillmate
