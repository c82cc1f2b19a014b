// The printed envelope, byte for byte, and the buffers that hold it.
#include "api/envelope.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace quillmate;

com::JsonPtr Parsed(const char* json) { return com::JsonPtr(cJSON_Parse(json)); }

TEST(Envelope, PrintsMembersInOrder) {
  struct Case {
    Result result;
    const char* text;
  };
  Case cases[] = {
      {Done(), "{\n\t\"success\":\ttrue,\n\t\"result\":\ttrue\n}"},
      {Fail("Refresh Fail!"),
       "{\n\t\"success\":\tfalse,\n\t\"result\":\t0,\n\t\"log\":\t\"Refresh Fail!\"\n}"},
      {Text(""), "{\n\t\"success\":\ttrue,\n\t\"result\":\t\"\"\n}"},
      {Text("a\"\\\n\x01"), "{\n\t\"success\":\ttrue,\n\t\"result\":\t\"a\\\"\\\\\\n\\u0001\"\n}"},
      // Bytes of the ANSI code page leave as they are, valid UTF-8 or not.
      {Text("\xc8\xb7\xb6\xa8"), "{\n\t\"success\":\ttrue,\n\t\"result\":\t\"\xc8\xb7\xb6\xa8\"\n}"},
      {Number(-2'147'483'647 - 1), "{\n\t\"success\":\ttrue,\n\t\"result\":\t-2147483648\n}"},
      {Boolean(false), "{\n\t\"success\":\ttrue,\n\t\"result\":\tfalse\n}"},
      {Result(false, true, "why"), "{\n\t\"success\":\tfalse,\n\t\"result\":\ttrue,\n\t\"log\":\t\"why\"\n}"},
      {Structured(Parsed("[[\"a\"], 1]")), "{\n\t\"success\":\ttrue,\n\t\"result\":\t[[\"a\"], 1]\n}"},
  };
  for (Case& c : cases) EXPECT_STREQ(PrintEnvelope(std::move(c.result)).get(), c.text);
}

TEST(Envelope, GroupsDoNotFreeEachOther) {
  ResultBuffers buffers;
  const char* text = buffers.Store(Text("kept"));
  buffers.Store(Fail("other group"));
  buffers.Store(Number(7));
  EXPECT_NE(std::string(text).find("kept"), std::string::npos);
  const char* flag = buffers.Store(Done());
  buffers.Store(Structured(Parsed("{}")));
  buffers.Store(Text("new"));
  EXPECT_NE(std::string(flag).find("true"), std::string::npos);
}

TEST(Envelope, PlainResultsStandAtOnePlace) {
  ResultBuffers buffers;
  const char* first = buffers.Store(Fail("Element not found!"));
  EXPECT_EQ(buffers.Store(Fail(std::string(1'000, 'a'))), first);
  EXPECT_EQ(buffers.Store(Done()), first);
  buffers.Store(Fail(std::string(100'000, 'a')));
  const char* again = buffers.Store(Done());
  EXPECT_EQ(buffers.Store(Fail("Element not found!")), again);
}

int allocations_left = 0;

void* LimitedAllocate(size_t size) { return allocations_left-- > 0 ? std::malloc(size) : nullptr; }

struct LimitedMemory {
  LimitedMemory() {
    cJSON_Hooks hooks = {LimitedAllocate, std::free};
    cJSON_InitHooks(&hooks);
  }
  ~LimitedMemory() { cJSON_InitHooks(nullptr); }
};

TEST(Envelope, IsNullWhenItCannotBeAllocatedAndLosesNothing) {
  // The leak check of the sanitizer watches over what each failing allocation leaves behind.
  const LimitedMemory limited;
  ResultBuffers buffers;
  int succeeded_after = -1;
  for (int n = 0; n < 100 && succeeded_after < 0; ++n) {
    allocations_left = n;
    const char* text = buffers.Store(Fail("message"));
    if (n == 0) {
      EXPECT_EQ(text, nullptr);
    }
    if (text != nullptr && std::string(text).find("message") != std::string::npos) succeeded_after = n;
  }
  EXPECT_GT(succeeded_after, 3);
}

}  // namespace
