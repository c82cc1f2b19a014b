// Tests elements against a predicate with the fewest calls to the page.
#pragma once

#include <windows.h>
#include <mshtml.h>

#include "com/com_ptr.h"
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

}  // namespace quillmate
