#pragma once

#include <windows.h>
#include <mshtml.h>
#include <string_view>

#include "com/com_ptr.h"

namespace quillmate {

/// @return the window of a document; null when the call fails.
com::ComPtr<IHTMLWindow2> GetParentWindow(IHTMLDocument2* document);

/// Finds the document that a frame locator names, seen from a document: "relative=parent", "relative=top",
/// "index=N" (from 0), "id=", "name=" or "src=" (the attribute as written, or its resolved address). Quotes
/// around the locator or its value are removed first; when that finds nothing the locator is tried as it
/// stands.
/// @return the frame's document; null when no frame of the document itself (not of its frames) matches.
com::ComPtr<IHTMLDocument2> FindFrameDocument(IHTMLDocument2* document, std::string_view locator);

/// @param element a frame or iframe element.
/// @return the document inside it; null for any other element, or when the calls fail.
com::ComPtr<IHTMLDocument2> ReadFrameDocument(IHTMLElement* element);

}  // namespace quillmate
