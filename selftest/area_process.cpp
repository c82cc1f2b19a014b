#include "area_process.h"

#include <windows.h>
#include <cstdio>
#include <gtest/gtest.h>

#include "com/encoding.h"
#include "results.h"
#include "support/real_browser.h"
#include "support/under_test.h"

namespace quillmate::selftest {
namespace {

void Write(const Message& message) {
  const std::string line = LineOf(message) + "\n";
  std::fwrite(line.data(), 1, line.size(), stdout);
  std::fflush(stdout);
}

void WriteAnswer(const std::string& question, const std::string& answer, const std::string& expected) {
  Write({.started = {}, .ended = {}, .answer = BrowserAnswer{question, answer, expected}});
}

std::string PlaceOf(const testing::TestPartResult& part) {
  if (part.file_name() == nullptr) return {};
  return std::string(part.file_name()) + ":" + std::to_string(part.line_number()) + "\n";
}

/// Without the traces, which would make two of one reason.
std::string ReasonOf(const testing::TestPartResult& part) {
  const std::string text = part.message();
  return text.substr(0, text.find("\nGoogle Test trace:"));
}

class Messenger : public testing::EmptyTestEventListener {
  void OnTestSuiteStart(const testing::TestSuite&) override { before_first_test_.clear(); }

  void OnTestStart(const testing::TestInfo& test) override {
    in_test_ = true;
    Write({.started = test.name(), .ended = {}, .answer = {}});
  }

  void OnTestPartResult(const testing::TestPartResult& part) override {
    if (!in_test_ && part.failed()) before_first_test_ += PlaceOf(part) + part.message() + "\n";
  }

  void OnTestEnd(const testing::TestInfo& test) override {
    in_test_ = false;
    TestResult result{test.test_suite_name(),
                      test.name(),
                      Outcome::kPassed,
                      {},
                      std::chrono::milliseconds(test.result()->elapsed_time())};
    for (int i = 0; i < test.result()->total_part_count(); ++i)
      Take(test.result()->GetTestPartResult(i), result);
    if (!before_first_test_.empty()) {
      result.outcome = Outcome::kFailed;
      result.text = "The area could not begin.\n" + before_first_test_;
    }
    Write({.started = {}, .ended = result, .answer = {}});
  }

  static void Take(const testing::TestPartResult& part, TestResult& result) {
    if (part.failed()) {
      if (result.outcome != Outcome::kFailed) result.text.clear();
      result.outcome = Outcome::kFailed;
      result.text += PlaceOf(part) + part.message() + "\n";
    } else if (part.skipped() && result.outcome == Outcome::kPassed) {
      result.outcome = Outcome::kNotTried;
      result.text = ReasonOf(part);
    }
  }

  bool in_test_ = false;
  std::string before_first_test_;
};

}  // namespace

int RunArea(const Options& options) {
  // No window of Windows' own may hold up the run after a crash.
  SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
  test::SpareRunningBrowsers();
  if (LoadLibraryW(com::FromUtf8(options.dll).c_str()) == nullptr) return 2;
  if (options.input == Input::kLeave) test::LeaveOutInput();
  test::SendReportsTo(WriteAnswer);
  testing::InitGoogleTest();
  GTEST_FLAG_SET(filter, options.area);
  auto& listeners = testing::UnitTest::GetInstance()->listeners();
  delete listeners.Release(listeners.default_result_printer());
  listeners.Append(new Messenger);
  return RUN_ALL_TESTS();
}

int ListTests(const std::string& filter) {
  testing::InitGoogleTest();
  GTEST_FLAG_SET(filter, filter);
  GTEST_FLAG_SET(list_tests, true);
  return RUN_ALL_TESTS();
}

}  // namespace quillmate::selftest
