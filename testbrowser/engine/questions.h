// Questions to a page's scripts, and how long an answer may take: as long as the script runs, but not longer
// than its document lives, nor when Chromium has plainly forgotten to answer.
#pragma once

#include <string>
#include <string_view>

#include "engine/page_parts.h"

namespace testbrowser::engine {

/// The unique id of the frame's context; empty when the frame is gone or gets none in time.
std::string ContextOf(const PageParts& page, const FrameId& id);

/// Asks in a frame's context. No answer comes before the next document while the page is being left.
Reply RequestIn(const PageParts& page, const FrameId& id, const std::string& context, const char* method,
                JsonPtr params);

/// Calls the agent's function (none when `name` is empty), also in a page that is being left. The page has
/// had all input that its window took before.
/// @return what Runtime.callFunctionOn answers.
Reply CallAgent(PageParts& page, const FrameId& id, const std::string& context, std::string_view name,
                JsonPtr args);

}  // namespace testbrowser::engine
