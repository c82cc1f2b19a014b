// From the session's target to the document that page commands act on.
#pragma once

#include <windows.h>
#include <mshtml.h>
#include <expected>

#include "api/result.h"
#include "com/com_ptr.h"
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

}  // namespace quillmate
