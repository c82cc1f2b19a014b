// What commands answer before anything is selected: their own failure, at once, whatever browsers there are.
#include <windows.h>
#include <objbase.h>
#include <gtest/gtest.h>
#include <thread>

#include "support/library.h"

namespace quillmate::test {
namespace {

TEST(NothingSelected, EveryCommandNamesWhatIsMissing) {
  const struct {
    const char* command;
    Parameters parameters;
    const char* message;
  } rows[] = {
      {"refresh", {}, "Refresh Fail!"},
      {"forward", {}, "Frame not found!"},
      {"back", {}, "Frame not found!"},
      {"close", {}, "Frame not found!"},
      {"quit", {}, "Frame not found!"},
      {"currenturl", {}, "Browser not found!"},
      {"selectwindowsize", {{"target", "max"}}, "Browser not found!"},
      {"selectframe", {{"target", "index=0"}}, "Frame not found!"},
      {"click", {{"target", "id=a"}}, "Element not found!"},
      {"gettext", {{"target", "id=a"}}, "Element not found!"},
      {"getattribute", {{"target", "xpath=//a"}, {"value", "href"}}, "Element not found!"},
      {"executescript", {{"value", "1"}}, "Frame not found!"},
      {"pagesource", {}, "Frame not found!"},
      {"getcookie", {}, "Frame not found!"},
  };
  for (const auto& row : rows)
    EXPECT_EQ(Call(row.command, row.parameters), Failed(row.message)) << row.command;
}

TEST(NothingSelected, ParametersAreCheckedFirst) {
  const struct {
    const char* command;
    Parameters parameters;
    const char* message;
  } rows[] = {
      {"selectwindowsize", {{"target", "-1,5"}}, "Select window size Fail!"},
      {"selectwindowsize", {{"target", "100"}}, "Select window size Fail!"},
      {"selectwindowsize", {{"target", "99999999999,5"}}, "Select window size Fail!"},
      {"click",
       {{"target", "css=a"}},
       "Parameter verification failed! The element location mechanism not support."},
      {"open",
       {{"target", "file:///C:/no/such/page.htm"}},
       "Parameter verification failed!The local file path does not exist!"},
      {"open", {{"target", "about:blank"}, {"by", "_self"}}, "Parameter verification failed!"},
  };
  for (const auto& row : rows)
    EXPECT_EQ(Call(row.command, row.parameters), Failed(row.message)) << row.command;
}

// The shell's list of browsers starts no browser, so a search ends quickly too.
TEST(NothingSelected, SearchesForWindowsThatAreNotThereFindNothing) {
  for (const char* target :
       {"index=5000", "title=no such page", "url=http://127.0.0.1:1/none", "handle=0x10", "handle=65552",
        "handle=none", "title='no such page'", "xpath=//nosuchtag", "id=nosuch"}) {
    EXPECT_EQ(Call("selectwindowuntop", {{"target", target}}), Failed("Browser not found!")) << target;
  }
}

TEST(MultiThreadedHost, CommandsAnswerOnAThreadOfAMultiThreadedApartment) {
  Envelope answer;
  std::thread([&] {
    CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    answer = Call("selectwindowuntop", {{"target", "title=no such page"}});
    CoUninitialize();
  }).join();
  EXPECT_EQ(answer, Failed("Browser not found!"));
}

}  // namespace
}  // namespace quillmate::test
