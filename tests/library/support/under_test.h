// Which browser the tests run against, and what is left out there.
#pragma once

#include <windows.h>
#include <string>

namespace quillmate::test {

enum class BrowserKind { kTestBrowser, kInternetExplorer, kEdge };

/// The test browser, unless the variable QUILLMATE_UNDER_TEST says "ie" or "edge".
BrowserKind UnderTest();

/// Ends the running test as skipped, from any function that it has called on its own thread.
[[noreturn]] void SkipTest(const std::string& reason);

/// Skips the test where the browser is a real one.
/// @param reason what the test does that only the test browser can do, after "it".
void TestBrowserOnly(const char* reason);

/// Has the test browser answer an open question in one of its ways, e.g. "eval=absent"; skips the test elsewhere.
/// @return whether it knows the question and the answer.
bool ChooseAnswer(HWND page, const std::string& choice);

/// Has the library press no key and move no pointer from now on: a test whose command would is skipped.
void LeaveOutInput();
/// Skips the test if a command has tried to press or move something since the last call.
void SkipIfInputWasLeftOut();

/// What a browser answers to a question, for a report about that browser.
/// @param expected empty where nobody knows the answer.
void Report(const std::string& question, const std::string& answer, const std::string& expected = {});
/// Where reports go; nowhere without.
void SendReportsTo(void (*receiver)(const std::string& question, const std::string& answer,
                                    const std::string& expected));

}  // namespace quillmate::test
