// From the session's target to the document that page commands act on.
#pragma once

#include <windows.h>
#include <mshtml.h>
#include <expected>
#include <string_view>

#include "api/command_params.h"
#include "api/result.h"
#include "com/owned.h"
#include "locate/document_search.h"
#include "locate/frames.h"
#include "session/session.h"

namespace quillmate {

/// Why there is no page to act on: there is none, or it does not answer for the time being.
enum class PageMissing { kGone, kSilent };
using PageOrMissing = std::expected<FramePath, PageMissing>;

/// Walks from the current target's top document down the selected frame path, afresh on every call: a frame
/// that was reloaded is found again.
PageOrMissing WalkFrames(Session& session);

/// @return the last document of that walk; null when nothing is selected or a frame of the path is not there.
com::ComPtr<IHTMLDocument2> GetFrameDocument(Session& session);

/// Whether a surface is selected, is valid and has a top document.
bool IsTargetUsable(Session& session);

/// Asks the current surface's thread whether it takes messages.
/// @return kGone when nothing usable is selected.
Response AskTarget(Session& session, std::chrono::milliseconds limit);

/// Whether the last question to the current surface was not answered: a document or an element that could not
/// be had may be there all the same.
bool WasTargetSilent(Session& session);

/// Checks that the current target can be used for an element, and brings it to the top.
/// @return the way to the current frame's document, "Element not found!" or "Switch tab failed!".
OrFailure<FramePath> BringPageToTop(Session& session, IHTMLElement* element);

using ElementOrFailure = std::expected<com::ComPtr<IHTMLElement>, SearchFailure>;

/// Finds the element that a locator names: a remembered element first, then the first match in the current
/// frame's document. Never waits.
/// @return the element, or the failure message of the search.
ElementOrFailure FindElement(Session& session, std::string_view locator);

/// The same on a page that the caller has at hand.
ElementOrFailure FindElement(Session& session, const PageOrMissing& page, std::string_view locator);

/// Reads "target", checks that it is an element locator and finds its element.
/// @return the element, the locator's verification message, or the failure message of the search.
ElementOrFailure ResolveTargetElement(Session& session, const CommandParams& params);

}  // namespace quillmate
