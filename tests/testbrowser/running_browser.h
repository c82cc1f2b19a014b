// A test browser on a page of one line, looked at from another process.
#pragma once

#include <windows.h>
#include <exdisp.h>
#include <functional>
#include <string>
#include <vector>

#include "com/owned.h"

namespace testbrowser::test {

/// Looks again and again until the condition holds. @return whether it did within 20 seconds.
bool Eventually(const std::function<bool()>& condition);
std::wstring ClassOf(HWND window);
std::wstring TextOf(HWND window);
/// The first child of that class, null when there is none.
HWND Child(HWND parent, const wchar_t* class_name);
/// @return the address of a page with that content.
std::wstring PageOf(const std::wstring& html);

class RunningBrowser {
 public:
  /// Starts the program and waits for a frame whose title begins with `title`.
  RunningBrowser(const std::wstring& arguments, const std::wstring& title);
  RunningBrowser(const RunningBrowser&) = delete;
  RunningBrowser& operator=(const RunningBrowser&) = delete;
  /// Ends the process.
  ~RunningBrowser();

  HWND Frame() const;
  /// The process's top-level window of a class with that beginning of its title.
  HWND Window(const std::wstring& class_name, const std::wstring& title) const;
  HWND Server() const;
  /// The browser object of the active tab.
  quillmate::com::ComPtr<IWebBrowser2> Object() const;
  bool HasEnded() const { return WaitForSingleObject(process_.get(), 0) == WAIT_OBJECT_0; }

 private:
  quillmate::com::UniqueHandle process_;
  DWORD process_id_ = 0;
  std::wstring frame_title_;
};

}  // namespace testbrowser::test
