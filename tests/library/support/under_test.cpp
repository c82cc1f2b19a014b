#include "support/under_test.h"

#include <windows.h>
#include <atomic>
#include <cstdlib>
#include <gtest/gtest.h>
#include <list>
#include <string_view>

#include "com/encoding.h"
#include "support/import_hook.h"

namespace quillmate::test {
namespace {

std::atomic<bool> input_was_left_out = false;
DWORD test_thread = 0;

void WINAPI NoKey(BYTE, BYTE, DWORD, ULONG_PTR) { input_was_left_out = true; }
void WINAPI NoMouse(DWORD, DWORD, DWORD, DWORD, ULONG_PTR) { input_was_left_out = true; }
UINT WINAPI NoInput(UINT count, INPUT*, int) {
  input_was_left_out = true;
  return count;
}
BOOL WINAPI NoPlace(int, int) {
  input_was_left_out = true;
  return TRUE;
}

void (*receiver)(const std::string&, const std::string&, const std::string&) = nullptr;

}  // namespace

BrowserKind UnderTest() {
  const char* chosen = std::getenv("QUILLMATE_UNDER_TEST");
  if (chosen == nullptr) return BrowserKind::kTestBrowser;
  return std::string_view(chosen) == "edge" ? BrowserKind::kEdge : BrowserKind::kInternetExplorer;
}

void SkipTest(const std::string& reason) {
  [&] { GTEST_SKIP() << reason; }();
  // Takes this exception for a result that it has noted already.
  throw testing::AssertionException({testing::TestPartResult::kSkip, __FILE__, __LINE__, reason.c_str()});
}

void TestBrowserOnly(const char* reason) {
  if (UnderTest() != BrowserKind::kTestBrowser) SkipTest(std::string("It ") + reason + ".");
}

bool ChooseAnswer(HWND page, const std::string& choice) {
  TestBrowserOnly("has the browser answer one way and another");
  const ATOM atom = GlobalAddAtomW(com::FromUtf8(choice).c_str());
  const UINT steering = RegisterWindowMessageW(L"testbrowser answer");
  const LRESULT known = SendMessageW(page, steering, atom, 0);
  GlobalDeleteAtom(atom);
  return known == 1;
}

void LeaveOutInput() {
  test_thread = GetCurrentThreadId();
  // Whichever of them the library uses.
  static std::list<ImportHook> hooks;
  hooks.emplace_back("keybd_event", NoKey);
  hooks.emplace_back("mouse_event", NoMouse);
  hooks.emplace_back("SendInput", NoInput);
  hooks.emplace_back("SetCursorPos", NoPlace);
}

void SkipIfInputWasLeftOut() {
  // A test's other threads cannot end it: its next command does.
  if (test_thread != GetCurrentThreadId() || !input_was_left_out.exchange(false)) return;
  SkipTest("It takes the mouse or the keyboard, which this run leaves alone.");
}

void Report(const std::string& question, const std::string& answer, const std::string& expected) {
  if (receiver != nullptr) receiver(question, answer, expected);
}

void SendReportsTo(void (*function)(const std::string&, const std::string&, const std::string&)) {
  receiver = function;
}

}  // namespace quillmate::test
