// Searches one document for the elements that a locator names.
#pragma once

#include <windows.h>
#include <mshtml.h>
#include <cstdint>
#include <expected>
#include <string_view>

#include "api/result.h"
#include "com/owned.h"

namespace quillmate {

/// Why a search gave no element.
struct SearchFailure : Failure {
  /// False when a call failed on its way to the page: whether there is such an element is unknown.
  bool page_answered = true;
};

/// Finds the first match of a locator, in the order of the document's collections. Quotes around the locator
/// or its value are removed first; when that finds nothing, the locator is tried unchanged.
/// @return the element, or the failure message of the search.
std::expected<com::ComPtr<IHTMLElement>, SearchFailure> FindFirst(IHTMLDocument2* document,
                                                                  std::string_view locator);

/// Counts the matches of a locator.
/// @return the count; a failure only when the page could not be asked.
std::expected<std::int32_t, SearchFailure> CountMatches(IHTMLDocument2* document, std::string_view locator);

}  // namespace quillmate
