// The one live line of a run in a terminal: how far it is and how long it will still take.
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

#include "printers.h"

namespace quillmate::player {

/// @param running how long the step has been running.
/// @return e.g. "[#####---------------]  3 of 12  click id=send  about 6 s left", cut to `columns`.
std::string ProgressText(const Step& step, const Summary& so_far, std::chrono::milliseconds running,
                         std::size_t columns);

/// Draws the line while a step runs and takes it away before the step's own line is printed. Comes first
/// among a run's observers, so that nothing is printed beside the live line.
class Progress : public Observer {
 public:
  Progress(TextSink& out, std::size_t columns);
  void Started(const Step& step, const Summary& so_far) override;
  void Finished(const Outcome& outcome, const Summary& so_far) override;
  void Ended(const Summary&) override {}

 private:
  void Draw();  ///< with mutex_ held
  void Tick(const std::stop_token& stop);

  TextSink& out_;
  std::size_t columns_;
  std::mutex mutex_;
  std::condition_variable_any ended_;
  const Step* step_ = nullptr;  ///< null between steps
  Summary so_far_;
  std::chrono::steady_clock::time_point start_;
  std::jthread ticker_;  ///< last: it uses all the others
};

}  // namespace quillmate::player
