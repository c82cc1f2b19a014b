// The box a script of one page waits for: alert, confirm, prompt or a modal dialog. The script stands in the
// debugger until the answer is there; everything else in the page can still be read.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "engine/page_listener.h"
#include "engine/session.h"

namespace testbrowser::engine {

class ScriptBoxes {
 public:
  struct Actions {
    std::function<void(const ScriptBox&, std::function<void(BoxAnswer)>)> show_box;
    std::function<void()> take_box_down;
    /// Opens a modal dialog's page; `finished` takes its return value (null for undefined) once it is closed.
    std::function<std::shared_ptr<Page>(const cJSON* request, std::function<void(JsonPtr)> finished)>
        open_dialog;
  };
  ScriptBoxes(const Session& session, Actions actions) : session_(session), actions_(std::move(actions)) {}

  /// A script stopped in the debugger: in one of our shims, or anywhere else, where it is sent on at once.
  /// Parameters of Debugger.paused.
  void OnPaused(const cJSON* params);
  /// The script runs again without an answer of ours, or its page is gone: nobody waits for the box any more.
  void Drop();
  /// Whether a script stands in a box.
  bool IsUp() const { return waiting_ != nullptr; }

 private:
  struct Waiting {
    Waiting(std::string frame, Connection& connection)
        : call_frame(std::move(frame)), dispatching(connection) {}
    std::string call_frame;
    Connection::DispatchScope dispatching;
    std::shared_ptr<Page> dialog;
  };
  void Show(const cJSON* request);
  void Resume(JsonPtr answer);
  /// The action, as long as the box that waits now still waits.
  template <class Answer>
  std::function<void(Answer)> WhileWaiting(std::function<void(Answer)> action);

  const Session& session_;
  Actions actions_;
  std::shared_ptr<Waiting> waiting_;
};

}  // namespace testbrowser::engine
