// What a page tells its owner. Every call comes on the UI thread, from the message loop or inside any engine
// call that waits; a listener may call the page back, also to close it.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "engine/json.h"

namespace testbrowser::engine {

class Page;
/// Chromium's own id of a frame; it stays the same when the frame navigates.
using FrameId = std::string;

struct ScriptBox {
  enum class Kind { kAlert, kConfirm, kPrompt };
  Kind kind = Kind::kAlert;
  std::string text;          ///< UTF-8
  std::string default_text;  ///< UTF-8; prompts only
};

struct BoxAnswer {
  bool accepted = false;
  std::string text;  ///< UTF-8; what an accepted prompt gives
};

struct ModalDialog {
  std::shared_ptr<Page> page;  ///< loads the dialog's address already; its opener waits until it is closed
  std::string features;        ///< showModalDialog's third argument as written
};

/// A press of the mouse (or a key) on a closed drop-down list. Its list is not part of the page's picture, so
/// the window's owner shows one of its own.
struct DropDown {
  FrameId frame;
  int left = 0, top = 0, right = 0, bottom = 0;  ///< the SELECT in client pixels of the page's window
  std::vector<std::string> options;              ///< UTF-8
  std::vector<bool> enabled;                     ///< one for each option
  int selected = -1;
};

class PageListener {
 public:
  virtual ~PageListener() = default;

  /// A document of the frame begins to load (a navigation was asked for, by anyone).
  virtual void OnLoadStarted(const FrameId& frame) = 0;
  /// The frame shows another document, or only another fragment (`same_document`). The address is in Windows'
  /// form.
  virtual void OnNavigated(const FrameId& frame, const std::string& url, bool same_document) = 0;
  /// The frame's document is parsed ("interactive").
  virtual void OnDocumentReady(const FrameId& frame) = 0;
  /// The frame's document and all it needs are loaded ("complete").
  virtual void OnLoadFinished(const FrameId& frame) = 0;
  /// A navigation failed; the frame shows an error page. The address is the one asked for.
  virtual void OnNavigationFailed(const FrameId& frame, const std::string& url, const std::string& error) = 0;
  /// The top document's title; UTF-8, empty when it has none.
  virtual void OnTitleChanged(const std::string& title) = 0;
  /// Page::LatestPicture is a new one.
  virtual void OnPicture() = 0;

  /// A script called alert, confirm or prompt and stays blocked until `answer` is called, once, at any later
  /// time (not necessarily before this returns). Answering after the box is gone does nothing.
  virtual void OnMessageBox(const ScriptBox& box, std::function<void(BoxAnswer)> answer) = 0;
  /// The page under the box went away (navigation, closing, crash): take the box down; nobody waits for its
  /// answer.
  virtual void OnMessageBoxGone() = 0;
  /// A script called showModalDialog and stays blocked until the dialog's page is closed. Give the page its
  /// listener (Page::SetListener) before returning.
  virtual void OnModalDialog(const ModalDialog& dialog) = 0;
  /// A script or link opened a window. Give the page its listener before returning, or it is closed again.
  virtual void OnPopup(std::shared_ptr<Page> page) = 0;
  /// `choose` takes the index chosen, or -1 to leave the list as it is; call it once.
  virtual void OnDropDown(const DropDown& list, std::function<void(int)> choose) = 0;

  /// The user is to choose files for a field of the page. `choose` takes their Windows paths, none when the user
  /// chose nothing; call it once.
  virtual void OnFileChooser(bool several, std::function<void(std::vector<std::string>)> choose) = 0;

  /// The page is no more: closed by us, by its script, crashed, or Chromium died. The last call to this
  /// listener.
  virtual void OnClosed(bool crashed) = 0;
};

}  // namespace testbrowser::engine
