#pragma once

namespace quillmate {

// Synthesised input waits in the queue of the window's thread after the call that sent it. A command that
// returned at once would let the next one find a page that has not seen it.

/// Waits until the window under the cursor has taken the mouse input sent so far, at most half a second.
void AwaitMouseTaken();

/// Waits until the window with the keyboard focus has taken the keys sent so far, at most half a second.
void AwaitKeysTaken();

}  // namespace quillmate
