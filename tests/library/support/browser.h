// Test browsers: started as a user or a host would, and gone at the end whatever the test did.
#pragma once

#include <windows.h>
#include <string>

#include "com/handle.h"

namespace quillmate::test {

enum class Shell { kClassic, kHosted };

/// A browser process that ends with this object.
class Browser {
 public:
  /// Starts the program and waits until it shows the page.
  explicit Browser(const std::string& url, Shell shell = Shell::kClassic);
  Browser(const Browser&) = delete;
  Browser& operator=(const Browser&) = delete;
  ~Browser() { Kill(); }

  /// Ends the process without warning, as a crash would.
  void Kill();
  DWORD ProcessId() const { return process_id_; }

  /// @return the process's first top-level window of a class; null when there is none.
  HWND TopLevelWindow(const wchar_t* class_name) const;
  /// @return the window of the page in front.
  HWND Page() const;
  HWND Frame() const { return TopLevelWindow(shell_ == Shell::kHosted ? L"Chrome_WidgetWin_1" : L"IEFrame"); }

 private:
  Shell shell_;
  com::UniqueHandle process_;
  DWORD process_id_ = 0;
};

/// @return the address of a file under tests/pages.
std::string FilePage(const std::string& name);

/// Ends the browsers that commands started, by the process behind each of their windows.
void EndStartedBrowsers();

}  // namespace quillmate::test
