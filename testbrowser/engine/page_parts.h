// What a page is made of, and how the protocol's events reach each part.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "engine/back_channel.h"
#include "engine/frame_tree.h"
#include "engine/input_queue.h"
#include "engine/page.h"
#include "engine/screencast.h"
#include "engine/script_boxes.h"
#include "engine/session.h"

namespace testbrowser::engine {

/// What a page needs of the browser around it.
class PageHost {
 public:
  virtual ~PageHost() = default;
  virtual std::shared_ptr<Page> OpenDialog(PageParts& opener, const cJSON* request,
                                           std::function<void(JsonPtr)> finished) = 0;
};

struct PageParts {
  PageParts(Session page_session, std::string target_id, PageHost& page_host);
  PageParts(const PageParts&) = delete;
  PageParts& operator=(const PageParts&) = delete;

  Session session;
  std::string target;
  FrameTree frames;  ///< the main frame's id is the target's
  PageListener* listener = nullptr;
  BackChannel back_channel;
  int last_call = 0;  ///< number of the last call of the agent
  InputQueue input;
  Screencast screencast;
  ScriptBoxes boxes;
  std::string title;
  bool blank_loaded = false;  ///< a navigation asked for before that is lost
  bool closed = false;
  bool closes_itself = false;  ///< a script of the page asked for its end
  /// The history's entry of the about:blank that every page begins on: there is no way back to it, unless it
  /// was asked for.
  std::optional<double> unasked_entry;

  /// Of a modal dialog's page: who waits for its return value.
  std::function<void(JsonPtr)> on_dialog_finished;
  JsonPtr return_value;

  /// Tells the listener, when there is one.
  template <class Notification>
  void Tell(Notification notification) const {
    if (listener != nullptr) notification(*listener);
  }

  /// Turns on all that the parts need, without waiting, and installs the scripts.
  void SetUp(const std::vector<std::string>& scripts);
  void AddScript(const std::string& script);
  /// Handles an event of this page's session.
  void HandleEvent(const std::string& method, const cJSON* params);
  void ChangeTitle(const std::string& title);
  /// Asks Chromium to close the page, once the script that runs now has ended.
  void RequestClose();
  /// The page is no more; tells the listener, once.
  void MarkClosed(bool crashed);
};

}  // namespace testbrowser::engine
