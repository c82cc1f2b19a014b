// Says what was being done when the library brought the process down.
#pragma once

#include <string>

#include "printers.h"

namespace quillmate::player {

/// After this, a crash of the process prints the crash message to `sink` and ends the process with exit
/// code 1. Call it at most once per process.
void ReportCrashesTo(TextSink& sink);

/// The text around what a crash is called ("the library crashed ...").
void SetCrashMessage(std::string before, std::string after);

/// Leaves this thread enough stack to report a stack overflow. To be called on each thread that calls the
/// library.
void KeepStackForCrashes();

/// Names the step that runs in the crash message.
class CrashReporter : public Observer {
 public:
  /// @param below_live_line whether the cursor may stand behind the live line of a terminal.
  CrashReporter(TextSink& errors, bool below_live_line);
  void Started(const Step& step, const Summary& so_far) override;
  void Finished(const Outcome& outcome, const Summary& so_far) override;
  void Ended(const Summary&) override {}

 private:
  std::string start_;
};

}  // namespace quillmate::player
