// The longest texts, built to be the worst for each expression, on a stack as small as a host's thread may
// have.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

#ifdef _WIN32
#include <windows.h>
#else
#include <pthread.h>
#endif

#include "api/validation.h"

namespace {

using quillmate::kPatternCount;
using quillmate::Matches;
using quillmate::Pattern;
using quillmate::PublishedSpelling;

constexpr size_t kLongest = 65'535;
#ifdef _WIN32
constexpr bool kMeasured = true;
constexpr size_t kStride = 1;
#else
// Slowed down by its sanitizers, the native build is there for the stack; every fifth text shows all it can.
constexpr bool kMeasured = false;
constexpr size_t kStride = 5;
#endif

std::string Repeat(const std::string& opening, const std::string& unit, const std::string& ending) {
  std::string text = opening;
  while (text.size() + unit.size() + ending.size() <= kLongest) text += unit;
  return text + ending;
}

/// Openings that lead an expression into its repetition, units that give it a choice at every byte, and
/// endings that make it fail only at the very end, so that every choice is tried again.
std::vector<std::string> WorstTexts() {
  std::vector<std::string> texts;
  for (const char* opening :
       {"",          "xpath=",       "xpath=/", "xpath=//*[@id='", "xpath=//*[@id='a']/",
        "id=",       "name=",        "class=",  "url=http://",     "text()=",
        "contains(", "starts-with(", "@",       "value=",          "label=",
        "src=",      "index=1",      "title=",  "anchor=",         "handle=",
        "-1",        "http://",      "center",  "relative=top"}) {
    for (const char* unit : {"a", "/", "=", ",)", "']", "1", "\xff"}) {
      for (const char* ending : {"", "\n", "]/\n"}) {
        texts.push_back(Repeat(opening, unit, ending));
      }
    }
  }
  return texts;
}

struct Slowest {
  double milliseconds[kPatternCount] = {};
  bool finished = false;
};

/// The best of a few tries when the first is slow: the matcher's own time, not that of whoever shares the
/// processor.
double MillisecondsOf(Pattern pattern, const std::string& text) {
  double best = 1e9;
  for (int tries = 0; tries < (kMeasured ? 5 : 1) && best > 2.0; ++tries) {
    const auto start = std::chrono::steady_clock::now();
    Matches(pattern, text);
    const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - start;
    best = std::min(best, took.count());
  }
  return best;
}

void MeasureAll(const std::vector<std::string>& texts, Slowest& slowest) {
  for (int i = 0; i < kPatternCount; ++i) {
    for (size_t k = 0; k < texts.size(); k += kStride) {
      slowest.milliseconds[i] =
          std::max(slowest.milliseconds[i], MillisecondsOf(static_cast<Pattern>(i), texts[k]));
    }
  }
  slowest.finished = true;
}

struct Work {
  const std::vector<std::string>& texts;
  Slowest& slowest;
};

// 64 KiB; a stack that overflows ends the thread without a word under Wine, hence Slowest::finished.
constexpr size_t kStackBytes = 64 * 1024;

#ifdef _WIN32
void RunOnSmallStack(Work work) {
  const auto run = [](void* argument) -> DWORD {
    auto* given = static_cast<Work*>(argument);
    MeasureAll(given->texts, given->slowest);
    return 0;
  };
  const HANDLE thread =
      CreateThread(nullptr, kStackBytes, run, &work, STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr);
  ASSERT_NE(thread, nullptr);
  WaitForSingleObject(thread, INFINITE);
  CloseHandle(thread);
}
#else
void RunOnSmallStack(Work work) {
  const auto run = [](void* argument) -> void* {
    auto* given = static_cast<Work*>(argument);
    MeasureAll(given->texts, given->slowest);
    return nullptr;
  };
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  ASSERT_EQ(pthread_attr_setstacksize(&attributes, kStackBytes), 0);
  pthread_t thread;
  ASSERT_EQ(pthread_create(&thread, &attributes, run, &work), 0);
  pthread_join(thread, nullptr);
  pthread_attr_destroy(&attributes);
}
#endif

TEST(PatternLimits, StayWithinASmallStackAndTenMilliseconds) {
  const auto texts = WorstTexts();
  Slowest slowest;
  RunOnSmallStack({texts, slowest});
  ASSERT_TRUE(slowest.finished);
  for (int i = 0; i < kPatternCount; ++i) {
    const char* spelling = PublishedSpelling(static_cast<Pattern>(i));
    std::printf("%7.3f ms  %s\n", slowest.milliseconds[i], spelling);
    if (kMeasured) {
      EXPECT_LT(slowest.milliseconds[i], 10.0) << spelling;
    }
  }
}

}  // namespace
