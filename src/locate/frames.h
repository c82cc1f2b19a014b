#pragma once

#include <windows.h>
#include <mshtml.h>
#include <string_view>
#include <vector>

#include "com/owned.h"

namespace quillmate {

/// One document on the way from a surface's top page to a frame.
struct FrameLevel {
  com::ComPtr<IHTMLDocument2> document;
  /// The frame element of the level above that shows the document. Null for the top page, and for a frame
  /// that was entered by its position: FindFrameElement gives it then.
  com::ComPtr<IHTMLElement> element;
};

/// From the top page downwards; never empty.
using FramePath = std::vector<FrameLevel>;

/// @return the window of a document; null when the call fails.
com::ComPtr<IHTMLWindow2> GetParentWindow(IHTMLDocument2* document);

/// Goes from the last level of a path to the frame that a locator names: "relative=parent", "relative=top",
/// "index=N" (from 0), "id=", "name=" or "src=" (the attribute as written, or its full address). Only frames
/// of the document itself count, not the frames inside them. Quotes around the locator or its value are
/// removed first; when that finds nothing, the locator is tried unchanged.
/// @return S_OK; S_FALSE when there is no such frame, and the path is as it was; else the failure in transit
/// that keeps the answer unknown.
HRESULT EnterFrame(FramePath& path, std::string_view locator);

/// @param level a level below the top page.
/// @return the frame element that shows the level's document; null when it cannot be found.
com::ComPtr<IHTMLElement> FindFrameElement(const FramePath& path, size_t level);

}  // namespace quillmate
