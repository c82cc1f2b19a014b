// Where a path's step looks: what the document itself answers about a first step, and the collection that any other
// step chooses from.
#pragma once

#include <windows.h>
#include <mshtml.h>
#include <string_view>
#include <variant>

#include "com/owned.h"
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

/// What a step is searched from: an element, or the document when null.
using Context = com::ComPtr<IHTMLElement>;

/// @param tag a step's tag text with its leading slashes. From the document one slash and two mean the same.
/// @return the result of the call that failed; a text that is no step gives an empty collection.
HRESULT CollectCandidates(IHTMLDocument2* document, const Context& context, std::string_view tag,
                          Candidates& candidates);

}  // namespace quillmate
