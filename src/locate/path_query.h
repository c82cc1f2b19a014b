// Evaluates the path form of a locator: steps of tags and selectors from the document downwards.
#pragma once

#include <windows.h>
#include <mshtml.h>
#include <expected>
#include <string_view>

#include "locate/collection_matches.h"
#include "locate/document_search.h"

namespace quillmate {

/// What a search found: at least one match.
struct Found {
  com::ComPtr<IHTMLElement> first;
  std::int32_t count = 0;
};
using FoundOrFailure = std::expected<Found, SearchFailure>;

/// Evaluates a path such as //div[@class='list']/a[2].
/// @return the first match of the branches' order when that is wanted, else how many there are; or a message
/// that names the step at which the branch that got furthest failed.
FoundOrFailure EvaluatePath(IHTMLDocument2* document, std::string_view path, Wanted wanted);

}  // namespace quillmate
