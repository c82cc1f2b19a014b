// Closes the browsers that a server has opened, whatever ends the server.
#pragma once

#include <windows.h>

#include <memory>
#include <string_view>

#include "opened_browsers.h"

namespace quillmate::player {

struct HandleCloser {
  void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using UniqueHandle = std::unique_ptr<void, HandleCloser>;

/// A second process that is told of each window opened and waits at the other end of a pipe. The pipe breaks
/// when this object or this whole process ends: then that process closes the windows and ends.
class BrowserGuard {
 public:
  /// @return null when the process cannot be started.
  static std::unique_ptr<BrowserGuard> Start();
  /// Waits until the windows are closed.
  ~BrowserGuard();
  BrowserGuard(const BrowserGuard&) = delete;
  BrowserGuard& operator=(const BrowserGuard&) = delete;

  /// @param returned whether the library has returned from the command.
  void AfterCommand(std::string_view command, bool returned);

 private:
  BrowserGuard(UniqueHandle pipe, UniqueHandle process);

  OpenedBrowsers opened_;
  UniqueHandle pipe_;
  UniqueHandle process_;
};

/// The other process: reads the windows from its standard input and closes them at its end.
/// @return its exit code.
int GuardBrowsers();

}  // namespace quillmate::player
