// Evaluates the path form of a locator: steps of tags and selectors from the document downwards.
#pragma once

#include <windows.h>
#include <mshtml.h>
#include <expected>
#include <string_view>

#include "api/result.h"
#include "locate/document_search.h"

namespace quillmate {

/// Evaluates a path such as //div[@class='list']/a[2].
/// @return at least one element in the order of the branches, or a message that names the step at which the
/// branch that got furthest failed.
OrFailure<Elements> EvaluatePath(IHTMLDocument2* document, std::string_view path, Wanted wanted);

}  // namespace quillmate
