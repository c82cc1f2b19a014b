// How long the library stays in the host's process.
#pragma once

namespace quillmate::com {

/// Keeps the library loaded until the process ends. Call it before something outside starts to hold the
/// library's code: a thread, or a callback that the system calls later.
void KeepLibraryLoaded();

}  // namespace quillmate::com
