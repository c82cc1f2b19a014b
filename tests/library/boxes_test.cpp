// The commands that answer message boxes, against the browser's boxes and against others that look like them.
#include <windows.h>
#include <atomic>
#include <mutex>
#include <string>
#include <thread>

#include "support/import_hook.h"
#include "support/page_test.h"

namespace quillmate::test {
namespace {

class Boxes : public PageTest {
 protected:
  /// Opens a box the way a page does, from a click that comes back while the box is open.
  static void Raise(const std::string& script) {
    Show("<!doctype html><button id=go onclick=\"said = " + script +
         "\">go</button><script>said = 'nothing'</script>");
    const ULONGLONG begin = GetTickCount64();
    ASSERT_EQ(Call("click", {{"target", "id=go"}}), StillRunning());
    const ULONGLONG waited = GetTickCount64() - begin;
    EXPECT_GE(waited, 900u);
    EXPECT_LT(waited, 2500u) << "a click waits for about a second";
    ASSERT_TRUE(AwaitBox());
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
    ASSERT_NO_FATAL_FAILURE(Raise(row.script));
    EXPECT_EQ(Call(row.command, row.parameters), Succeeded());
    EXPECT_EQ(Said(), row.said);
  }
}

std::mutex debug_lock;
std::wstring debug_output;

void WINAPI NoteWide(const wchar_t* text) {
  const std::lock_guard lock(debug_lock);
  debug_output += text;
}
void WINAPI NoteNarrow(const char* text) { NoteWide(std::wstring(text, text + strlen(text)).c_str()); }

TEST_F(Boxes, TheDebugOutputSaysWhatABoxSaid) {
  const ImportHook wide("OutputDebugStringW", NoteWide);
  const ImportHook narrow("OutputDebugStringA", NoteNarrow);
  ASSERT_TRUE(wide.IsInForce() && narrow.IsInForce());
  const struct {
    const char* script;
    const wchar_t* written;
  } rows[] = {
      {"(alert('No stock left'), 1)", L"Message from webpage\r\nNo stock left\r\n"},
      {"prompt('How many?', '7') + ''", L"Explorer User Prompt\r\nHow many?\r\n"},
  };
  for (const auto& row : rows) {
    ASSERT_NO_FATAL_FAILURE(Raise(row.script));
    debug_output.clear();
    EXPECT_EQ(Call("assertalert"), Succeeded());
    EXPECT_EQ(debug_output, row.written);
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
  ASSERT_NO_FATAL_FAILURE(Raise("confirm('later')"));
  Sleep(300);  // nothing is to be seen of a box that nobody answers
  EXPECT_TRUE(AwaitBox());
  EXPECT_EQ(Call("choosecancelonnextprompt"), Succeeded());
  EXPECT_EQ(Said(), "false");
}

/// A box of this process: an owner window with a title, and an owned window with a field and buttons.
class ForeignBox {
 public:
  /// @param busy_ms how long its thread is busy with each press before it takes anything else.
  ForeignBox(const wchar_t* owner_title, const wchar_t* button, bool visible = true, DWORD busy_ms = 0)
      : owner_title_(owner_title), button_(button), visible_(visible), busy_ms_(busy_ms), thread_([this] {
          Run();
        }) {
    for (int round = 0; round < 1000 && !ready_; ++round) Sleep(5);
    EXPECT_TRUE(ready_) << "no window";
  }
  ~ForeignBox() {
    PostThreadMessageW(thread_id_, WM_QUIT, 0, 0);
    thread_.join();
  }
  int presses() const { return presses_; }
  /// Whether its button stands pressed, waiting for the mouse to let it go.
  bool IsHalfPressed() const { return (SendMessageW(press_, BM_GETSTATE, 0, 0) & BST_PUSHED) != 0; }
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

  static LRESULT CALLBACK ButtonProcedure(HWND button, UINT message, WPARAM wparam, LPARAM lparam) {
    const auto* box = reinterpret_cast<ForeignBox*>(GetWindowLongPtrW(button, GWLP_USERDATA));
    if (message == WM_LBUTTONDOWN) Sleep(box->busy_ms_);
    return CallWindowProcW(box->original_, button, message, wparam, lparam);
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
    press_ = CreateWindowW(L"Button", button_, WS_CHILD | WS_VISIBLE, 0, 30, 80, 20, box, nullptr, nullptr,
                           nullptr);
    SetWindowLongPtrW(press_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    original_ = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(press_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&ButtonProcedure)));
    ready_ = box != nullptr && field_ != nullptr && press_ != nullptr;
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0)) DispatchMessageW(&message);
    DestroyWindow(owner);
  }

  const wchar_t* owner_title_;
  const wchar_t* button_;
  bool visible_;
  DWORD busy_ms_;
  std::atomic<bool> ready_ = false;
  HWND field_ = nullptr;
  HWND press_ = nullptr;
  WNDPROC original_ = nullptr;
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
  EXPECT_EQ(above.presses(), 1);
  EXPECT_EQ(below.presses(), 0);
}

// A press that is not answered within the second has arrived all the same: no other box is tried, and the
// button is let go.
TEST_F(Boxes, ABusyBoxIsAnsweredOnce) {
  const ForeignBox below(L"Internet Explorer", L"OK");
  const ForeignBox above(L"Internet Explorer", L"OK", true, 1500);
  EXPECT_EQ(Call("assertalert"), Succeeded());
  EXPECT_FALSE(above.IsHalfPressed());
  EXPECT_EQ(above.presses(), 1);
  EXPECT_EQ(below.presses(), 0);
}

/// A window of this process whose thread takes no messages for five seconds, and one that it owns.
class SilentWindow {
 public:
  SilentWindow() : thread_([this] { Run(); }) {
    while (!ready_) Sleep(5);
  }
  ~SilentWindow() { thread_.join(); }

 private:
  void Run() {
    HWND owner = CreateWindowW(L"Static", L"Internet Explorer", WS_OVERLAPPEDWINDOW, 0, 0, 200, 100, nullptr,
                               nullptr, nullptr, nullptr);
    CreateWindowW(L"Static", L"silent", WS_POPUP | WS_VISIBLE, 10, 10, 200, 100, owner, nullptr, nullptr,
                  nullptr);
    ready_ = true;
    Sleep(5000);
    DestroyWindow(owner);
  }

  std::atomic<bool> ready_ = false;
  std::thread thread_;
};

// A host's own thread may wait for the one that issues the command.
TEST_F(Boxes, WindowsOfTheHostAreNotWaitedFor) {
  const SilentWindow window;
  const ULONGLONG begin = GetTickCount64();
  EXPECT_EQ(Call("answeronnextprompt", {{"value", "x"}}), Failed("Answer on next prompt failed!"));
  EXPECT_LT(GetTickCount64() - begin, 3000u);
}

TEST_F(Boxes, ABoxOfAFocusHandlerHoldsNoCommandUp) {
  Show("<!doctype html><input id=f value=old onfocus=\"if (!window.asked) { asked = 1; alert('in') }\">");
  const ULONGLONG begin = GetTickCount64();
  EXPECT_EQ(Call("type_m", {{"target", "id=f"}, {"value", "new"}}), Failed("Send keys failed!"));
  EXPECT_LT(GetTickCount64() - begin, 8000u);
  ASSERT_TRUE(AwaitBox());
  EXPECT_EQ(Script("document.getElementById('f').value"), "old");
  EXPECT_EQ(Call("assertalert"), Succeeded());
  EXPECT_EQ(Call("type_m", {{"target", "id=f"}, {"value", "new"}}), Succeeded());
  EXPECT_EQ(Script("document.getElementById('f').value"), "new");
}

// Both clicks come back while their page waits, and both handlers run on once the boxes are answered.
TEST_F(Boxes, TwoClicksThatAskSomethingAreBothFinished) {
  const std::string page =
      "<!doctype html><button id=go onclick=\"n.value += confirm('sure?') ? 'y' : 'n'\">go</button>"
      "<input id=n>";
  Show(page);
  for (const char* answer : {"chooseokonnextconfirmation", "choosecancelonnextconfirmation"}) {
    ASSERT_EQ(Call("click", {{"target", "id=go"}}), StillRunning());
    ASSERT_TRUE(AwaitBox());
    EXPECT_EQ(Call(answer), Succeeded());
  }
  for (int round = 0; round < 40 && Script("n.value") != "yn"; ++round) Sleep(50);
  EXPECT_EQ(Script("n.value"), "yn");
  EXPECT_EQ(Call("click", {{"target", "id=n"}}), Answered("")) << "late answers belong to nobody";
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
