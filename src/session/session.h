// What a host has selected and remembered, from one command to the next.
//
// A surface is a tab or a dialog of a browser. A holder is the library's object for one surface. The target
// is the session's record of the selected surface with the frame path in it. A window is an HWND, never one
// of these.
#pragma once

#include <windows.h>
#include <mshtml.h>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "com/agile.h"
#include "com/owned.h"
#include "session/window_holder.h"

namespace quillmate {

/// Elements that getelement remembered under a name.
class ElementRegistry {
 public:
  /// Remembers an element; a name used before names the new element from now on.
  void Remember(std::string name, com::ComPtr<IHTMLElement> element);
  /// @return the element remembered under a name; null when there is none.
  com::ComPtr<IHTMLElement> Recall(std::string_view name) const;

 private:
  std::map<std::string, com::Agile<IHTMLElement>, std::less<>> elements_;
};

struct CurrentTarget {
  /// The selected surface; null in the record of a browser that could not be started.
  std::unique_ptr<WindowHolder> holder;
  /// Frame locators from the top document downwards, as the host gave them; empty means the top document.
  std::vector<std::string> frame_path;
};

/// The command frame owns the one session and passes it to every command; nothing else may look it up.
class Session {
 public:
  /// @return the current record, null until something was selected and again after it was closed.
  CurrentTarget* Current() { return current_.get(); }
  /// @return the current holder if it is valid, else null.
  WindowHolder* ValidHolder();

  /// Makes a found surface current, with an empty frame path. The previous surface keeps its reference.
  void SelectTarget(std::unique_ptr<WindowHolder> holder);
  /// Makes a surface current, with an empty frame path, and lets go of the previous one.
  void ReplaceTarget(std::unique_ptr<WindowHolder> holder);
  /// Makes an empty record when there is none.
  void EnsureTarget();
  /// Lets go of the current record: nothing is selected afterwards.
  void ClearTarget();

  ElementRegistry& elements() { return elements_; }

 private:
  void KeepReference(std::unique_ptr<WindowHolder> holder);

  std::unique_ptr<CurrentTarget> current_;
  /// Surfaces that were selected once keep their reference, as hosts rely on: a browser started unseen by
  /// automation would end with its last one.
  std::vector<std::unique_ptr<WindowHolder>> earlier_;
  ElementRegistry elements_;
};

}  // namespace quillmate
