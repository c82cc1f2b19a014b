#include "run_areas.h"

#include <algorithm>
#include <atomic>

#include "child.h"
#include "support/browser.h"

namespace quillmate::selftest {
namespace {

std::atomic<bool> stopped = false;

std::string Hexadecimal(DWORD code) {
  char text[16] = "";
  std::snprintf(text, sizeof text, "0x%08lX", code);
  return text;
}

class AreaRun {
 public:
  AreaRun(const AreaTests& tests, const Options& options, const std::string& dll, Run& run,
          const std::function<void(const TestResult&)>& ended)
      : area_(tests.area), left_(tests.tests), options_(options), dll_(dll), run_(run), ended_(ended) {}

  /// A test that ends its process fails, and another process runs those after it.
  void RunAll() {
    while (!left_.empty() && !stopped) RunProcess();
    while (!left_.empty()) End(left_.front(), Outcome::kNotTried, "The run was stopped.");
  }

 private:
  void RunProcess() {
    Child child(Arguments());
    current_.clear();
    begin_ = std::chrono::steady_clock::now();
    const std::chrono::seconds limit(options_.limit_s);
    std::string line;
    Child::State state;
    while ((state = child.Next(line, limit)) == Child::State::kLine) {
      if (const auto message = ReadLine(line)) Take(*message);
    }
    if (left_.empty() && state == Child::State::kEnd) return;
    if (state == Child::State::kTimeOut)
      FailCurrent("It did not end within " + std::to_string(options_.limit_s) + " s.");
    else
      FailCurrent("Its process ended with " + Hexadecimal(child.ExitCode()) + ".");
    test::EndStartedBrowsers();
  }

  std::vector<std::string> Arguments() const {
    std::string filter;
    for (const std::string& name : left_) filter += (filter.empty() ? "" : ":") + area_ + "." + name;
    return {"--area", filter, "--dll", dll_, options_.input == Input::kTake ? "--input" : "--no-input"};
  }

  void Take(const Message& message) {
    if (message.answer) run_.answers.push_back(*message.answer);
    if (message.started) {
      current_ = *message.started;
      begin_ = std::chrono::steady_clock::now();
    }
    if (message.ended) {
      current_.clear();
      std::erase(left_, message.ended->name);
      Note(*message.ended);
    }
  }

  /// Before the first test or between two of them, the next one is to blame.
  void FailCurrent(const std::string& text) {
    End(current_.empty() ? left_.empty() ? "" : left_.front() : current_, Outcome::kFailed, text);
  }

  void End(const std::string& name, Outcome outcome, const std::string& text) {
    if (name.empty()) return;
    const auto time =
        std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - begin_);
    const TestResult result{area_, name, outcome, text, outcome == Outcome::kFailed ? time : time.zero()};
    std::erase(left_, result.name);
    Note(result);
  }

  void Note(const TestResult& result) {
    run_.tests.push_back(result);
    ended_(result);
  }

  std::string area_;
  std::vector<std::string> left_;
  const Options& options_;
  const std::string& dll_;
  Run& run_;
  const std::function<void(const TestResult&)>& ended_;
  std::string current_;
  std::chrono::steady_clock::time_point begin_;
};

/// "  Name" or "Area.", each perhaps with a remark about its parameter.
std::string WithoutRemark(const std::string& line) {
  const size_t end = line.find('#');
  const size_t last = line.find_last_not_of(' ', end == std::string::npos ? end : end - 1);
  return line.substr(0, last + 1);
}

}  // namespace

std::vector<AreaTests> FindTests(const std::string& filter) {
  std::vector<AreaTests> areas;
  Child child({"--list", "--filter", filter});
  std::string line;
  while (child.Next(line, std::chrono::seconds(60)) == Child::State::kLine) {
    const std::string name = WithoutRemark(line);
    if (name.starts_with("  ") && !areas.empty())
      areas.back().tests.push_back(name.substr(2));
    else if (name.ends_with('.'))
      areas.push_back({name.substr(0, name.size() - 1), {}});
  }
  return areas;
}

void RunAreas(const std::vector<AreaTests>& areas, const Options& options, const std::string& dll, Run& run,
              const std::function<void(const TestResult&)>& ended) {
  for (const AreaTests& area : areas) AreaRun(area, options, dll, run, ended).RunAll();
}

void StopRun() { stopped = true; }

}  // namespace quillmate::selftest
