// Which of the desktop's browser windows this process has opened.
#pragma once

#include <cstdint>
#include <set>
#include <span>
#include <string_view>
#include <vector>

namespace quillmate::player {

/// A browser's top-level window.
struct BrowserWindow {
  std::uint64_t handle = 0;
  std::uint32_t process = 0;

  auto operator<=>(const BrowserWindow&) const = default;
};

/// Compares the desktop's windows before and after each command. A window that has come up during a command
/// that opens browsers is this process' own; a browser process whose only windows are such, is too, and so
/// are its later windows, popups for instance.
class OpenedBrowsers {
 public:
  /// @param windows that were there before any command.
  explicit OpenedBrowsers(std::span<const BrowserWindow> windows);

  struct News {
    std::vector<BrowserWindow> windows;    ///< newly opened
    std::vector<std::uint32_t> processes;  ///< newly known to be ours alone
  };
  /// @param returned whether the library has returned from the command. One that it has not returned from can
  ///   open a browser during the next.
  News After(std::string_view command, bool returned, std::span<const BrowserWindow> windows);

 private:
  std::set<BrowserWindow> known_;
  std::set<std::uint32_t> processes_of_others_;
  std::set<std::uint32_t> own_processes_;
  bool still_opening_ = false;
};

}  // namespace quillmate::player
