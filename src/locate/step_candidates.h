// The collection that a path's step chooses from.
#pragma once

#include <windows.h>
#include <mshtml.h>
#include <string_view>

#include "com/com_ptr.h"
#include "locate/collection_matches.h"

namespace quillmate {

/// What a step is searched from: an element, or the document when null.
using Context = com::ComPtr<IHTMLElement>;

/// @param tag a step's tag text with its leading slashes. From the document one slash and two mean the same.
/// @return the result of the call that failed; a text that is no step gives an empty collection.
HRESULT CollectCandidates(IHTMLDocument2* document, const Context& context, std::string_view tag,
                          Candidates& candidates);

}  // namespace quillmate
