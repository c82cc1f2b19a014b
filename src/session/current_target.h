// The one record of what the host has selected: every page command starts here.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "session/window_holder.h"

namespace quillmate::session {

struct CurrentTarget {
  /// The selected surface; null in the record of a browser that could not be started.
  std::unique_ptr<WindowHolder> holder;
  /// Frame locators from the top document downwards, as the host gave them; empty means the top document.
  std::vector<std::string> frame_path;
};

/// @return the current record, null until something was selected and again after it was closed.
CurrentTarget* Current();

/// @return the current record's holder when it answers IsValid, else null.
WindowHolder* ValidHolder();

/// Makes a found surface current, with an empty frame path. The previous surface keeps its reference.
void SelectTarget(std::unique_ptr<WindowHolder> holder);

/// Makes a surface current, with an empty frame path, and lets go of the previous one.
void ReplaceTarget(std::unique_ptr<WindowHolder> holder);

/// Makes an empty record when there is none.
void EnsureTarget();

/// Lets go of the current record: nothing is selected afterwards.
void ClearTarget();

}  // namespace quillmate::session
