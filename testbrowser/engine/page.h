// One page of the browser, whatever shows it (tab, popup, modal dialog): its frames, calls into its scripts,
// navigation, pictures and input. UI thread only.
#pragma once

#include <windows.h>
#include <expected>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/input_event.h"
#include "engine/json.h"
#include "engine/page_listener.h"
#include "engine/picture.h"

namespace testbrowser::engine {

class Connection;
struct PageParts;

struct CallError {
  enum class Kind {
    kFrameGone,   ///< no such frame, or it navigated away while the call ran
    kScript,      ///< the function threw
    kEngineGone,  ///< the page is closed or crashed, or Chromium is dead
  };
  Kind kind = Kind::kEngineGone;
  std::string text;  ///< UTF-8; for a script error its text ("TypeError: …")
};

class Page {
 public:
  /// Made by Engine.
  explicit Page(std::unique_ptr<PageParts> parts);
  ~Page();
  Page(const Page&) = delete;
  Page& operator=(const Page&) = delete;

  /// Whose calls tell of this page; null for nobody.
  void SetListener(PageListener* listener);
  bool IsClosed() const;

  // Frames.
  FrameId MainFrame() const;
  bool HasFrame(const FrameId& frame) const;
  /// The frame's parent; nothing for the main frame and for frames that are gone.
  std::optional<FrameId> ParentFrame(const FrameId& frame) const;
  /// Direct child frames, in the order in which they were attached (not always document order).
  std::vector<FrameId> ChildFrames(const FrameId& frame) const;
  /// The address of the frame's document in Windows' form; after a failed navigation the address asked for.
  std::string FrameUrl(const FrameId& frame) const;
  /// Whether the frame shows Chromium's error page instead of what was asked for.
  bool ShowsErrorPage(const FrameId& frame) const;

  // Calls into the page.
  /// Calls `window[Symbol.for("testbrowser.agent")][function](...args)` in the frame's main world, as by a
  /// user's gesture, and waits for the answer. While it waits, the engine's events are handled (listeners are
  /// called); window messages are dispatched only while a message box or modal dialog is up, so that other
  /// COM calls get answered then. A script that never ends blocks it, as it blocks the real browser.
  /// @param args a JSON array; null for no arguments.
  /// @return the answer by value (null for undefined).
  std::expected<JsonPtr, CallError> Call(const FrameId& frame, std::string_view function,
                                         JsonPtr args = nullptr);
  /// Runs a script text in the frame's main world and waits, in the same way. The value of its last
  /// expression.
  std::expected<JsonPtr, CallError> Evaluate(const FrameId& frame, std::string_view script);
  /// Waits, in the same way, until no script of the page runs.
  void AwaitScripts();
  /// The frame inside a FRAME, IFRAME or OBJECT element, also of another origin. The agent's function
  /// `element(number)` gives the element of that number.
  std::optional<FrameId> FrameOfElement(const FrameId& frame, int node);
  /// The number of the element that holds the frame, in the parent frame's agent (`numberOf(element)` there).
  std::optional<int> OwnerElement(const FrameId& frame);

  // Navigation. None of these waits; the listener is told.
  /// @param url an address or a path in Windows' form; UTF-8.
  void Navigate(std::string_view url);
  void NavigateFrame(const FrameId& frame, std::string_view url);
  void Reload(bool ignore_cache = false);
  /// Steps through the history. Waits only for the list of it.
  /// @return false when there is no such entry.
  bool Go(int delta);
  void Stop();
  /// Closes the page, without asking it. The listener hears OnClosed before this returns.
  void Close();

  // Window.
  /// @param width, height the client size of the page's window in pixels; the page is laid out to it.
  /// @param screen_x, screen_y where the client area begins on the screen.
  void SetViewport(int width, int height, int screen_x, int screen_y);
  /// Whether pictures are wanted: true when the page's window is shown, false while it is hidden.
  void SetPainting(bool wanted);
  /// The latest picture; null before the first.
  std::shared_ptr<const Picture> LatestPicture() const;
  /// Tells the page whether it has the keyboard's focus.
  void SetFocus(bool focused);

  // Input: given on without waiting, in the order of the calls.
  void Mouse(const MouseInput& input);
  void Wheel(const WheelInput& input);
  void Key(const KeyInput& input);

 private:
  std::unique_ptr<PageParts> parts_;
};

}  // namespace testbrowser::engine
