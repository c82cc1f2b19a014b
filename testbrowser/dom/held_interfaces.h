#pragma once

namespace testbrowser::dom {

/// Exports one object with every interface that clients use, for as long as the process lives. Wine registers
/// an interface with its RPC server while some object is exported with it. The release of the last one waits
/// for the interface's calls to end, on the thread that has to serve them: a call of another client thread
/// that came in meanwhile is never served, and both processes wait for ever (measured under Wine 8). To be
/// called on the thread that serves the pages, in its apartment.
void HoldInterfaces();

}  // namespace testbrowser::dom
