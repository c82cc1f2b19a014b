// The way from the selected surface to the document that element commands act on.
#pragma once

#include <windows.h>
#include <mshtml.h>
#include <string_view>

#include "com/com_ptr.h"

namespace quillmate::locate {

/// Walks from the current target's top document down the selected frame path, afresh on every call: a frame
/// that was reloaded is found again.
/// @return the document; null when nothing is selected or a frame of the path is not there.
com::ComPtr<IHTMLDocument2> GetFrameDocument();

/// Whether a surface is selected, answers as valid and has a top document.
bool IsTargetUsable();

/// Finds the document that a frame locator names, seen from a document: "relative=parent", "relative=top",
/// "index=N" (from 0), "id=", "name=" or "src=" (the attribute as written, or its resolved address). Quotes
/// around the locator or its value are removed first; when that finds nothing the locator is tried as it
/// stands.
/// @return the frame's document; null when no frame of the document itself (not of its frames) matches.
com::ComPtr<IHTMLDocument2> FindFrameDocument(IHTMLDocument2* document, std::string_view locator);

/// @param element a frame or iframe element.
/// @return the document inside it; null for any other element, or when it cannot be had.
com::ComPtr<IHTMLDocument2> GetFrameContent(IHTMLElement* element);

}  // namespace quillmate::locate
