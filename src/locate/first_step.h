// What a document answers about a path's first step without a walk over its elements.
#pragma once

#include <windows.h>
#include <mshtml.h>
#include <variant>

#include "com/com_ptr.h"
#include "locate/collection_matches.h"
#include "locate/locator_syntax.h"

namespace quillmate {

/// Nothing exact: every element has to be looked at.
struct WalkNeeded {};
/// No element of the document matches.
struct NoMatch {};
/// The first match in the document's order; there may be more.
struct FirstMatch {
  com::ComPtr<IHTMLElement> element;
};
/// Every match is among these, in the document's order.
struct AmongCandidates {
  Candidates candidates;
};
/// The question did not reach the document.
struct Unasked {
  HRESULT result;
};
using FirstStepAnswer = std::variant<WalkNeeded, NoMatch, FirstMatch, AmongCandidates, Unasked>;

/// Asks for the matches of a step such as //*[@id='a'], /div[@class='b'] or //input[@name='c'], which on a
/// large page costs thousands of calls less than a walk. Gives an exact answer or none: it is the walk's own
/// answer, whatever the document mode.
FirstStepAnswer AskDocument(IHTMLDocument2* document, const LocatorStep& step, const Selector& selector,
                            Wanted wanted);

}  // namespace quillmate
