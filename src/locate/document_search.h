// Finds the elements of one document that a locator names; knows nothing of the current target.
#pragma once

#include <windows.h>
#include <mshtml.h>
#include <expected>
#include <string_view>
#include <vector>

#include "api/result.h"
#include "com/com_ptr.h"

namespace quillmate {

using Elements = std::vector<com::ComPtr<IHTMLElement>>;

/// How many matches the caller has use for. Each match costs calls to the browser, so a search for the first
/// one stops there.
enum class Wanted { kFirst, kAll };

/// Finds the matches of a locator, in the order of the document's collections. Quotes around the locator or
/// its value are removed first; when that finds nothing the locator is tried as it stands.
/// @return at least one element, or the failure message of the search.
OrFailure<Elements> FindElements(IHTMLDocument2* document, std::string_view locator,
                                 Wanted wanted = Wanted::kAll);

}  // namespace quillmate
