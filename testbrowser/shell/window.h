// A window whose messages reach an object: the base of every window of the shell.
#pragma once

#include <windows.h>
#include <string>

namespace testbrowser::shell {

class Window {
 public:
  Window() = default;
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;
  virtual ~Window();

  /// Null before Create and once the window is destroyed, by whomever.
  HWND hwnd() const { return hwnd_; }

 protected:
  struct Settings {
    const wchar_t* class_name;
    const wchar_t* text = L"";
    DWORD style = 0;
    DWORD extended_style = 0;
    HWND parent = nullptr;  ///< the owner, for a window that is no child
    RECT place{};           ///< parent's client pixels; screen pixels for a top-level window
    UINT class_style = 0;   ///< used when the first window of the class is made
  };
  /// @throws std::runtime_error when the system refuses the window.
  void Create(const Settings& settings);
  /// Destroys the window now, if there still is one.
  void Destroy();
  /// Called for every message; what it does not know goes to the base's. The object outlives the call.
  virtual LRESULT OnMessage(UINT message, WPARAM wparam, LPARAM lparam);

 private:
  static LRESULT CALLBACK Procedure(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam);
  static void EnsureClass(const Settings& settings);

  HWND hwnd_ = nullptr;
};

/// Whether a program outside asks a window something by this message, now being handled.
bool IsQuestion(UINT message);

/// A window that is there for its class and its place in the tree: its first child fills it.
class NestingWindow : public Window {
 public:
  NestingWindow(const wchar_t* class_name, HWND parent, const wchar_t* text = L"");
  /// Puts it at the place given, in the parent's client pixels.
  void MoveTo(const RECT& place);

 protected:
  LRESULT OnMessage(UINT message, WPARAM wparam, LPARAM lparam) override;
};

RECT ClientRect(HWND window);
std::wstring WindowText(HWND window);

}  // namespace testbrowser::shell
