// The decision to cancel a call, with a clock of the test's own.
#include "com/call_watch.h"

#include <gtest/gtest.h>

namespace {

using quillmate::com::CallWatch;
using std::chrono::milliseconds;

class CallWatchTest : public testing::Test {
 protected:
  bool LookAt(const void* call, int ms) { return watch_.IsOverdue(call, CallWatch::Time(milliseconds(ms))); }

  const int first_ = 0;
  const int second_ = 0;
  CallWatch watch_{milliseconds(1000)};
};

TEST_F(CallWatchTest, OneCallHasTheWholeLimit) {
  EXPECT_FALSE(LookAt(&first_, 500));
  EXPECT_FALSE(LookAt(&first_, 1499));
  EXPECT_TRUE(LookAt(&first_, 1500));
}

TEST_F(CallWatchTest, EachCallHasALimitOfItsOwn) {
  EXPECT_FALSE(LookAt(&first_, 0));
  EXPECT_FALSE(LookAt(&second_, 900));
  EXPECT_FALSE(LookAt(&first_, 1800));
  EXPECT_FALSE(LookAt(nullptr, 2700));
  EXPECT_FALSE(LookAt(&first_, 2800));
  EXPECT_FALSE(LookAt(&first_, 3700));
  EXPECT_TRUE(LookAt(&first_, 3800));
}

TEST_F(CallWatchTest, ATimeOutDoesNotCountForTheNextCall) {
  LookAt(&first_, 0);
  EXPECT_TRUE(LookAt(&first_, 1000));
  EXPECT_FALSE(LookAt(&second_, 1100));
  EXPECT_FALSE(LookAt(&second_, 2000));
}

TEST_F(CallWatchTest, ACallThatGoesOnIsCancelledAgain) {
  LookAt(&first_, 0);
  EXPECT_TRUE(LookAt(&first_, 1000));
  EXPECT_FALSE(LookAt(&first_, 1900));
  EXPECT_TRUE(LookAt(&first_, 2000));
}

TEST_F(CallWatchTest, NoCallIsNeverOverdue) {
  EXPECT_FALSE(LookAt(nullptr, 0));
  EXPECT_FALSE(LookAt(nullptr, 100000));
}

}  // namespace
