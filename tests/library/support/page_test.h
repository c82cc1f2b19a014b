// A test on one page: shown in a browser that the tests of a program share, selected for the commands, and
// able to say which events reached it.
#pragma once

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "support/browser.h"
#include "support/library.h"
#include "support/page_server.h"

namespace quillmate::test {

/// An event as the page saw it.
struct PageEvent {
  std::string type;
  /// The target's id, or its tag name when it has none.
  std::string target;
  int x = 0;
  int y = 0;
  int button = 0;
  bool trusted = false;
  std::string key;
};

class PageTest : public testing::Test {
 protected:
  static void SetUpTestSuite();
  static void TearDownTestSuite();

  /// Serves a page without showing it: a frame's, or one to come later.
  static std::string Serve(const std::string& path, const std::string& html);
  /// Serves a page from an origin of its own: 0 is Serve's, any other number another one.
  static std::string ServeFrom(int origin, const std::string& path, const std::string& html);

  /// Shows a page and selects it, or ends the test.
  static void Show(const std::string& html);

  /// Evaluates a script in the current frame, again when a loaded machine keeps it longer than the second that the
  /// command waits: it must stand being run twice. That the command did wait so long is checked. @return its value
  /// as text.
  static std::string Script(const std::string& script);

  /// The events recorded so far by the current frame's page, which must hold kRecorder.
  static std::vector<PageEvent> Events();

  /// The same once an event of a type was recorded, or after three seconds.
  static std::vector<PageEvent> EventsUntil(const std::string& type);

  /// Waits until a message box of the shared browser is open. @return false when none opens within seconds.
  static bool AwaitBox();

  /// @return the text of a text answer, unescaped.
  static std::string TextOf(const Envelope& envelope);

  static Browser& TheBrowser();
  /// Starts a new browser in place of one that a test ended or left with a box open.
  static void RestartBrowser();
};

/// A page's script that records the input and form events that reach it, in the order of their arrival.
extern const std::string kRecorder;

/// The events of a type.
std::vector<PageEvent> OfType(const std::vector<PageEvent>& events, const std::string& type);

/// The types of the events, joined by blanks; moves left out.
std::string TypesOf(const std::vector<PageEvent>& events);

}  // namespace quillmate::test
