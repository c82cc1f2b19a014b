// The other way into a page while it is being left: see shims/back_channel.js.
#pragma once

#include <map>
#include <string>

#include "engine/page_listener.h"
#include "engine/session.h"

namespace testbrowser::engine {

class BackChannel {
 public:
  static constexpr char kPattern[] = "https://testbrowser.invalid/*";
  explicit BackChannel(const Session& session) : session_(session) {}

  /// Has the frame's page take a call as soon as it fetches one, unless it has taken that call already.
  /// @param number higher than those of all calls before.
  /// @param handler gets what Runtime.callFunctionOn would answer.
  void Put(int number, const FrameId& frame, JsonPtr call, ReplyHandler handler);
  void Withdraw(int number) { calls_.erase(number); }

  /// A request was stopped for us. Parameters of Fetch.requestPaused.
  /// @return false when it is none of the page's fetches.
  bool OnRequest(const cJSON* params);
  /// A report of the kind "answer".
  void OnAnswer(const cJSON* report);
  /// The frame's document is gone.
  void Forget(const FrameId& frame) { held_.erase(frame); }
  /// The page was not left after all: it takes its calls from the session again.
  void Close();

 private:
  struct Held {
    std::string request;  ///< empty while the page works on a call
    double departure = 0;
  };
  struct Call {
    FrameId frame;
    JsonPtr message;  ///< null once the page has it
    ReplyHandler handler;
  };
  void GiveNext(const FrameId& frame);
  void Fulfill(Held& held, const cJSON* message);

  const Session& session_;
  std::map<FrameId, Held> held_;
  std::map<int, Call> calls_;
};

}  // namespace testbrowser::engine
