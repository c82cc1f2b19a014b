// Says in which step the library brought the process down.
#pragma once

#include "printers.h"

namespace quillmate::player {

/// From its making on, a crash of the process prints the step that was running to `errors` and ends the
/// process with exit code 1. There is one of it in a process.
class CrashReporter : public Observer {
 public:
  explicit CrashReporter(TextSink& errors);
  void Started(const Step& step, const Summary& so_far) override;
  void Finished(const Outcome& outcome, const Summary& so_far) override;
  void Ended(const Summary&) override {}
};

}  // namespace quillmate::player
