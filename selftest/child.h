// A process of this program, and the lines that it writes.
#pragma once

#include <windows.h>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "com/owned.h"

namespace quillmate::selftest {

class Child {
 public:
  /// Starts this program again. Throws when that fails.
  explicit Child(const std::vector<std::string>& arguments);
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;
  /// Ends the process if it still runs.
  ~Child();

  enum class State { kLine, kEnd, kTimeOut };
  /// Waits for a line.
  State Next(std::string& line, std::chrono::milliseconds limit);

  /// Waits for the end. @return the exit code.
  DWORD ExitCode();

 private:
  void Read();
  /// Adds what waits in the pipe to the text, and its whole lines to the lines.
  void Take(std::string& text, DWORD length);

  com::UniqueHandle process_;
  com::UniqueHandle output_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<std::string> lines_;
  bool at_end_ = false;
  std::thread reader_;
};

}  // namespace quillmate::selftest
