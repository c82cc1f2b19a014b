// The commands that answer message boxes, against the browser's boxes and against others that look like them.
#include <windows.h>
#include <thread>

#include "support/page_test.h"

namespace quillmate::test {
namespace {

class Boxes : public PageTest {
 protected:
  /// Opens a box the way a page does, from a click that comes back while the box is open.
  static void Raise(const std::string& script) {
    Show("<!doctype html><button id=go onclick=\"said = " + script +
         "\">go</button><script>said = 'nothing'</script>");
    ASSERT_EQ(Call("click", {{"target", "id=go"}}), StillRunning());
  }
  static std::string Said() {
    for (int round = 0; round < 40 && Script("said") == "nothing"; ++round) Sleep(50);
    return Script("said");
  }
};

TEST_F(Boxes, EachCommandAnswersItsBox) {
  const struct {
    const char* script;
    const char* command;
    Parameters parameters;
    const char* said;
  } rows[] = {
      {"(alert('a'), 'alerted')", "assertalert", {}, "alerted"},
      {"confirm('b')", "chooseokonnextconfirmation", {}, "true"},
      {"confirm('b')", "choosecancelonnextconfirmation", {}, "false"},
      {"prompt('c', 'default')", "answeronnextprompt", {{"value", "mine"}}, "mine"},
      {"prompt('c', 'default') + ''", "choosecancelonnextprompt", {}, "null"},
      {"prompt('c', 'default')", "assertalert", {}, "default"},
      {"confirm('b')", "clickonalertdialog", {{"accept", "True"}, {"input-value", "unused"}}, "true"},
      {"confirm('b')", "clickonalertdialog", {{"accept", "False"}}, "false"},
      {"prompt('c')", "clickonalertdialog", {{"accept", "True"}, {"input-value", "typed"}}, "typed"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.command + std::string(" on ") + row.script);
    Raise(row.script);
    EXPECT_EQ(Call(row.command, row.parameters), Succeeded());
    EXPECT_EQ(Said(), row.said);
  }
}

TEST_F(Boxes, NothingIsArmedForALaterBox) {
  Show("<!doctype html>nothing open");
  const struct {
    const char* command;
    Parameters parameters;
    const char* message;
  } rows[] = {
      {"assertalert", {}, "Assertalert failed"},
      {"chooseokonnextconfirmation", {}, "Choose ok on next confirmation failed!"},
      {"choosecancelonnextconfirmation", {}, "Choose cancel on next confirmation failed!"},
      {"answeronnextprompt", {{"value", "x"}}, "Answer on next prompt failed!"},
      {"answeronnextprompt", {{"value", std::string(65536, 'x')}}, "Parameter verification failed!"},
      {"choosecancelonnextprompt", {}, "Choose cancel on next prompt failed!"},
      {"clickonalertdialog", {{"accept", "True"}}, "Click on alert dialog failed!"},
      {"clickonalertdialog", {{"accept", "true"}}, "Click on alert dialog failed!"},
      {"clickonalertdialog", {}, "Click on alert dialog failed!"},
  };
  for (const auto& row : rows)
    EXPECT_EQ(Call(row.command, row.parameters), Failed(row.message)) << row.command;
}

/// A box of this process: an owner window with a title, and an owned window with a field and buttons.
class ForeignBox {
 public:
  ForeignBox(const wchar_t* owner_title, const wchar_t* button, bool visible = true)
      : owner_title_(owner_title), button_(button), visible_(visible), thread_([this] { Run(); }) {
    while (box_ == nullptr) Sleep(5);
  }
  ~ForeignBox() {
    PostThreadMessageW(thread_id_, WM_QUIT, 0, 0);
    thread_.join();
  }
  int presses() const { return presses_; }
  std::wstring FieldText() const {
    wchar_t text[100] = L"";
    SendMessageW(field_, WM_GETTEXT, 100, reinterpret_cast<LPARAM>(text));
    return text;
  }

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_COMMAND && HIWORD(wparam) == BN_CLICKED) {
      ++reinterpret_cast<ForeignBox*>(GetWindowLongPtrW(window, GWLP_USERDATA))->presses_;
    }
    return DefWindowProcW(window, message, wparam, lparam);
  }

  void Run() {
    thread_id_ = GetCurrentThreadId();
    WNDCLASSW look = {};
    look.lpfnWndProc = Procedure;
    look.lpszClassName = L"ForeignBox";
    RegisterClassW(&look);
    HWND owner = CreateWindowW(L"ForeignBox", owner_title_, WS_OVERLAPPEDWINDOW, 0, 0, 200, 100, nullptr,
                               nullptr, nullptr, nullptr);
    const DWORD shown = visible_ ? WS_VISIBLE : 0;
    HWND box = CreateWindowW(L"ForeignBox", L"question", WS_POPUP | WS_CAPTION | shown, 10, 10, 200, 100,
                             owner, nullptr, nullptr, nullptr);
    SetWindowLongPtrW(box, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    field_ = CreateWindowW(L"Edit", L"", WS_CHILD | WS_VISIBLE, 0, 0, 80, 20, box, nullptr, nullptr, nullptr);
    CreateWindowW(L"Button", button_, WS_CHILD | WS_VISIBLE, 0, 30, 80, 20, box, nullptr, nullptr, nullptr);
    box_ = box;
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0)) DispatchMessageW(&message);
    DestroyWindow(owner);
  }

  const wchar_t* owner_title_;
  const wchar_t* button_;
  bool visible_;
  std::atomic<HWND> box_ = nullptr;
  HWND field_ = nullptr;
  std::atomic<int> presses_ = 0;
  std::atomic<DWORD> thread_id_ = 0;
  std::thread thread_;
};

TEST_F(Boxes, OnlyVisibleBoxesOfABrowserWithAKnownButtonAreTouched) {
  const struct {
    const wchar_t* owner;
    const wchar_t* button;
    bool visible;
    bool pressed;
  } rows[] = {
      {L"Page - Internet Explorer", L"OK", true, true},
      {L"Page - Internet Explorer", L"ok", true, true},
      {L"Page - Internet Explorer", L"Ok", true, true},
      {L"Page - Internet Explorer", L"&OK", true, false},
      {L"Page - Internet Explorer", L"Okay", true, false},
      {L"Page - Internet Explorer", L"OK", false, false},
      {L"Page - internet explorer", L"OK", true, false},
      {L"Some other program", L"OK", true, false},
      {L"Page - Internet Explorer", L"Cancel", true, false},
  };
  for (const auto& row : rows) {
    const ForeignBox box(row.owner, row.button, row.visible);
    EXPECT_EQ(Call("assertalert").success, row.pressed) << row.button;
    EXPECT_EQ(box.presses(), row.pressed ? 1 : 0) << row.button;
  }
}

TEST_F(Boxes, FieldIsFilledEvenWhenNoButtonMatches) {
  const ForeignBox box(L"Internet Explorer", L"Later");
  EXPECT_EQ(Call("answeronnextprompt", {{"value", "filled"}}), Failed("Answer on next prompt failed!"));
  EXPECT_EQ(box.FieldText(), L"filled");
}

TEST_F(Boxes, OfTwoOnlyTheFirstIsAnswered) {
  const ForeignBox below(L"Internet Explorer", L"OK");
  const ForeignBox above(L"Internet Explorer", L"OK");
  EXPECT_EQ(Call("assertalert"), Succeeded());
  EXPECT_EQ(above.presses() + below.presses(), 1);
}

TEST_F(Boxes, ABoxOfAFocusHandlerHoldsNoCommandUp) {
  Show("<!doctype html><input id=f value=old onfocus=\"if (!window.asked) { asked = 1; alert('in') }\">");
  EXPECT_EQ(Call("type_m", {{"target", "id=f"}, {"value", "new"}}), Failed("Send keys failed!"));
  EXPECT_EQ(Script("document.getElementById('f').value"), "old");
  EXPECT_EQ(Call("assertalert"), Succeeded());
  EXPECT_EQ(Call("type_m", {{"target", "id=f"}, {"value", "new"}}), Succeeded());
  EXPECT_EQ(Script("document.getElementById('f').value"), "new");
}

/// Under code page 936 the buttons have their Chinese captions; the program is then run a second time for
/// these.
TEST_F(Boxes, ChineseCaptionsAreKnownInTheirCodePage) {
  const ForeignBox ok(L"Internet Explorer", L"\u786E\u5B9A");
  EXPECT_EQ(Call("assertalert").success, GetACP() == 936);
  const ForeignBox cancel(L"Internet Explorer", L"\u53D6\u6D88");
  EXPECT_EQ(Call("choosecancelonnextprompt").success, GetACP() == 936);
}

}  // namespace
}  // namespace quillmate::test
