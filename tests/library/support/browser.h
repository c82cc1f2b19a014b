// Browsers: started as a user or a host would, and gone at the end whatever the test did.
#pragma once

#include <windows.h>
#include <string>

#include "com/owned.h"

namespace quillmate::test {

enum class Shell { kClassic, kHosted };

/// A browser process that ends with this object.
class Browser {
 public:
  /// Starts the browser under test and waits until it shows the page. A shell that it has not skips the test.
  explicit Browser(const std::string& url, Shell shell = Shell::kClassic);
  Browser(const Browser&) = delete;
  Browser& operator=(const Browser&) = delete;
  ~Browser();

  /// Ends the process without warning, as a crash would.
  void Kill();
  /// Chooses what the browser does where real ones differ: NAME=VALUE, one of its switches.
  void SetSwitch(const wchar_t* setting) const;
  DWORD ProcessId() const { return process_id_; }

  /// @return the process's first top-level window of a class; null when there is none.
  HWND TopLevelWindow(const wchar_t* class_name) const;
  /// @return the window of the page in front.
  HWND Page() const;
  HWND Frame() const;

 private:
  void StartTestBrowser(const std::string& url);
  void StartReal(const std::string& url);

  Shell shell_;
  /// A real browser's; its process may have other frames.
  HWND real_frame_ = nullptr;
  com::UniqueHandle process_;
  DWORD process_id_ = 0;
};

/// @return the address of a file under tests/pages. Skips the test where these are not.
std::string FilePage(const std::string& name);

/// Ends the browsers that commands started, by the process behind each of their windows.
void EndStartedBrowsers();

}  // namespace quillmate::test
