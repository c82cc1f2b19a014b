// The printed envelope, byte for byte, and the buffers that hold it.
#include "api/result.h"

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

TEST(Envelope, ALongTextGivesItsMemoryBack) {
  ResultBuffers buffers;
  // So long that it has a mapping of its own, which nothing else gets.
  const char* page = buffers.Store(Text(std::string(10'000'000, 'a')));
  EXPECT_NE(buffers.Store(Text("short")), page);
}

int allocations = 0;
int refused_allocation = 0;

void* Allocate(size_t size) { return ++allocations == refused_allocation ? nullptr : std::malloc(size); }

/// Refuses one allocation of the printer, counted from 1.
class RefusedAllocation {
 public:
  explicit RefusedAllocation(int number) {
    allocations = 0;
    refused_allocation = number;
    cJSON_Hooks hooks = {Allocate, std::free};
    cJSON_InitHooks(&hooks);
  }
  ~RefusedAllocation() { cJSON_InitHooks(nullptr); }
};

TEST(Envelope, IsNullWhenItCannotBeAllocatedAndLosesNothing) {
  // The leak check of the sanitizer watches over what each failing allocation leaves behind.
  ResultBuffers buffers;
  int number = 1;
  for (;; ++number) {
    const RefusedAllocation refused(number);
    for (const bool success : {true, false}) {
      allocations = 0;
      const char* text = buffers.Store(success ? Text("value") : Fail("message"));
      if (allocations < number) continue;
      EXPECT_EQ(text, nullptr) << "allocation " << number;
    }
    if (allocations < number) break;
  }
  EXPECT_GT(number, 5);
}

}  // namespace
