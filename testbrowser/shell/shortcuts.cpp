#include "shell/shortcuts.h"

#include <windows.h>

namespace testbrowser::shell {
namespace {

struct Entry {
  unsigned modifiers;
  unsigned virtual_key;
  Shortcut shortcut;
};

constexpr unsigned kCtrlShift = engine::kCtrl | engine::kShift;
constexpr unsigned kCtrlAlt = engine::kCtrl | engine::kAlt;

constexpr Entry kShortcuts[] = {
    {engine::kCtrl, VK_NEXT, Shortcut::kNextTab},
    {engine::kCtrl, VK_TAB, Shortcut::kNextTab},
    {engine::kCtrl, VK_PRIOR, Shortcut::kPreviousTab},
    {kCtrlShift, VK_TAB, Shortcut::kPreviousTab},
    {engine::kCtrl, 'W', Shortcut::kCloseTab},
    {engine::kCtrl, VK_F4, Shortcut::kCloseTab},
    {kCtrlAlt, VK_F4, Shortcut::kCloseOtherTabs},
    {engine::kCtrl, 'T', Shortcut::kNewTab},
    {0, VK_F5, Shortcut::kRefresh},
    {engine::kCtrl, 'R', Shortcut::kRefresh},
    {engine::kAlt, VK_LEFT, Shortcut::kBack},
    {engine::kAlt, VK_RIGHT, Shortcut::kForward},
};

}  // namespace

std::optional<Shortcut> ShortcutOf(const engine::KeyInput& key) {
  for (const Entry& entry : kShortcuts) {
    if (entry.modifiers == key.modifiers && entry.virtual_key == key.virtual_key) return entry.shortcut;
  }
  return std::nullopt;
}

}  // namespace testbrowser::shell
