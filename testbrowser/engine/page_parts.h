// What a page is made of, and how the protocol's events reach each part.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "engine/frame_tree.h"
#include "engine/input_queue.h"
#include "engine/page.h"
#include "engine/screencast.h"
#include "engine/session.h"

namespace testbrowser::engine {

struct PageParts {
  PageParts(Session page_session, std::string target_id)
      : session(std::move(page_session)),
        target(std::move(target_id)),
        frames(target),
        input(session),
        screencast(session, [this] { Tell([](PageListener& to) { to.OnPicture(); }); }) {}
  PageParts(const PageParts&) = delete;
  PageParts& operator=(const PageParts&) = delete;

  Session session;
  std::string target;
  FrameTree frames;  ///< the main frame's id is the target's
  InputQueue input;
  Screencast screencast;
  PageListener* listener = nullptr;
  bool closed = false;
  std::string title;

  /// Tells the listener, when there is one.
  template <class Notification>
  void Tell(Notification notification) const {
    if (listener != nullptr) notification(*listener);
  }

  /// Turns on all that the parts need, without waiting, and installs the scripts.
  void SetUp(const std::vector<std::string>& scripts);
  /// Handles an event of this page's session.
  void HandleEvent(const std::string& method, const cJSON* params);
  void ChangeTitle(const std::string& title);
  /// The page is no more; tells the listener, once.
  void MarkClosed(bool crashed);
};

}  // namespace testbrowser::engine
