// Calls the library on a thread of its own, so that a command that does not return can be given up.
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "runner.h"

namespace quillmate::player {

/// One command on its way.
struct Call {
  std::string id;  ///< of the request, as JSON
  std::string command;
  std::string parameters;
};

/// What became of a call.
struct CallResult {
  enum class State { kReturned, kRunning, kNotBegun };
  State state = State::kReturned;
  std::optional<std::string> answer;  ///< the library's; none for a null pointer
  std::vector<std::string> notes;
  std::string busy_with;  ///< not begun: the command that the library has not returned from
};

class CallThread {
 public:
  using TimePoint = std::chrono::steady_clock::time_point;
  /// Asked again and again during a call, because what bounds a call can change meanwhile.
  using Deadline = std::function<TimePoint()>;

  /// @param before_call runs on the thread, before each call.
  CallThread(CommandHost& host, std::function<void(const Call&)> before_call);

  /// Waits for a call until its deadline. One that is late goes on; what it returns is dropped, and the next
  /// call waits for it first.
  CallResult Make(Call call, const Deadline& deadline);
  /// @return whether the library has not returned from the last call.
  bool Busy();

 private:
  struct Job {
    Call call;
    CallResult result;
    bool done = false;
  };

  void Work(const std::stop_token& stop);
  bool WaitUntilDone(std::unique_lock<std::mutex>& lock, const Job& job, const Deadline& deadline);

  CommandHost& host_;
  std::function<void(const Call&)> before_call_;
  std::mutex mutex_;
  std::condition_variable_any changed_;
  std::shared_ptr<Job> job_;  ///< the last one
  bool has_work_ = false;
  std::jthread thread_;  ///< last: it uses all the others
};

}  // namespace quillmate::player
