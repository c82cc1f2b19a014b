// What commands cost in calls to the browser, and what they answer when any one of these calls is refused.
#include <windows.h>

#include "support/page_test.h"

namespace quillmate::test {
namespace {

/// The browser's own count of the calls that reach it, and its refusals.
class CallFilter {
 public:
  explicit CallFilter(HWND page) : page_(page) {}
  void Reset() const { Send(0, 0); }
  LRESULT Calls() const { return Send(1, 0); }
  /// Refuses the call at a position from now on, counted from 1.
  void Refuse(int position) const { Send(2, position); }
  LRESULT Refused() const { return Send(6, 0); }

 private:
  LRESULT Send(WPARAM request, LPARAM argument) const {
    static const UINT message = RegisterWindowMessageW(L"testbrowser call filter");
    return SendMessageW(page_, message, request, argument);
  }
  HWND page_;
};

class Faults : public PageTest {};

struct Row {
  const char* command;
  Parameters parameters;
  /// To another process, releases left out; each is what a command's time is made of.
  int calls;
};

const Row kRows[] = {
    {"currenturl", {}, 2},
    {"getcookie", {}, 2},
    {"pagesource", {}, 3},
    {"executescript", {{"value", "1 + 1"}}, 5},
    {"gettext", {{"target", "id=p"}}, 3},
    {"gettext", {{"target", "name=n[2]"}}, 4},
    {"gettext", {{"target", "class=x"}}, 4},
    {"gettext", {{"target", "xpath=//*[@id='p']"}}, 4},
    {"gettext", {{"target", "xpath=//ul[@class='x']/li[2]"}}, 8},
    {"getattribute", {{"target", "id=i"}, {"value", "value"}}, 5},
    {"getelementcount", {{"target", "xpath=//li"}}, 5},
    {"getelement", {{"target", "id=p"}, {"return", "kept"}}, 2},
    {"click", {{"target", "id=b"}}, 4},
    {"select_m", {{"target", "id=s"}, {"value", "index=1"}}, 7},
    {"deselect", {{"target", "id=m"}, {"value", "index=1"}}, 7},
    {"sendkeystoelement", {{"target", "id=i"}, {"value", "v"}}, 5},
    {"getcontrolinfo", {{"target", "id=i"}}, 17},
    {"gettable", {{"by", "id=t"}}, 24},
    {"selectwindowuntop", {{"target", "title=Faults"}}, 3},
    {"selectframe", {{"target", "relative=top"}}, 1},
};

// A refused call makes its command fail, or answer as if nothing had happened; never answer something else.
TEST_F(Faults, CommandsCostWhatTheyDidAndFailByAnyCall) {
  Show(
      "<!doctype html><title>Faults</title><p id=p>text</p><ul class=x><li>1<li>2</ul><i name=n>a</i>"
      "<i name=n>b</i><input id=i value=v><button id=b>b</button><select id=s><option>1<option>2</select>"
      "<select id=m multiple><option>1<option>2</select><table id=t><tr><td>1<td>2<tr><td>3<td>4</table>");
  const CallFilter filter(TheBrowser().Page());
  for (const Row& row : kRows) {
    SCOPED_TRACE(row.command + std::string(" ") +
                 (row.parameters.size() == 0 ? "" : row.parameters.begin()->second));
    // The first time, Wine asks a new object for its interfaces.
    Call(row.command, row.parameters);
    filter.Reset();
    const Envelope healthy = Call(row.command, row.parameters);
    EXPECT_TRUE(healthy.success) << healthy;
    EXPECT_EQ(filter.Calls(), row.calls);
    // By design, cells that cannot be read are empty and rows left out.
    if (row.command == std::string("gettable")) continue;
    for (int position = 1;; ++position) {
      filter.Reset();
      filter.Refuse(position);
      const Envelope answer = Call(row.command, row.parameters);
      if (filter.Refused() == 0) break;
      EXPECT_TRUE(answer == healthy || (!answer.success && !answer.log.empty()) || answer == StillRunning())
          << "call " << position << " refused: " << answer;
      ASSERT_LT(position, 60);
    }
    filter.Reset();
    EXPECT_EQ(Call(row.command, row.parameters), healthy);
  }
}

}  // namespace
}  // namespace quillmate::test
