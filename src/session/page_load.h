// Waits for the current page to finish loading.
#pragma once

namespace quillmate::session {

/// Waits up to five seconds, in steps of one, until the current surface is gone, invalid or no longer busy.
/// @return false when it is still busy after that.
bool WaitForPageLoad();

}  // namespace quillmate::session
