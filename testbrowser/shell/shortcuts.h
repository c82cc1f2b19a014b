// The keys that the browser keeps for itself.
#pragma once

#include <optional>

#include "engine/input_event.h"

namespace testbrowser::shell {

enum class Shortcut {
  kNextTab,
  kPreviousTab,
  kCloseTab,
  kCloseOtherTabs,
  kNewTab,
  kRefresh,
  kBack,
  kForward
};

/// @return nothing when the key belongs to the page.
std::optional<Shortcut> ShortcutOf(const engine::KeyInput& key);

}  // namespace testbrowser::shell
