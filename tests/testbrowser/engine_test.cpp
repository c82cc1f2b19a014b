// The engine against a real Chromium: calls, boxes, windows, pictures, input, ends.
#include "engine_fixture.h"

#include <algorithm>

#include "engine/file_address.h"

namespace testbrowser::engine {
namespace {

TEST_F(EngineTest, CallsGiveValuesAndErrors) {
  const FrameId main = page_->MainFrame();
  const auto sum = page_->Call(main, "add", JsonArray(JsonNumber(2), JsonNumber(3)));
  ASSERT_TRUE(sum);
  EXPECT_EQ(PrintJson(sum->get()), "5");
  const auto thrown = page_->Call(main, "fail");
  ASSERT_FALSE(thrown);
  EXPECT_EQ(thrown.error().kind, CallError::Kind::kScript);
  EXPECT_NE(thrown.error().text.find("TypeError: broken"), std::string::npos);
  const auto nowhere = page_->Call("no such frame", "add");
  ASSERT_FALSE(nowhere);
  EXPECT_EQ(nowhere.error().kind, CallError::Kind::kFrameGone);
  EXPECT_EQ(Run("'\\ud800x'"), "\"\xEF\xBF\xBDx\"") << "a lone surrogate must not lose the message";
  EXPECT_EQ(Run("undefined"), "null");
}

TEST_F(EngineTest, AFrameThatIsLeftGivesAnErrorAndAnEngineGoesOn) {
  Show("<iframe src='about:blank'></iframe>");
  const auto children = page_->ChildFrames(page_->MainFrame());
  ASSERT_EQ(children.size(), 1U);
  EXPECT_TRUE(page_->Evaluate(children[0], "1"));
  Show("<p>other</p>");
  const auto late = page_->Evaluate(children[0], "1");
  ASSERT_FALSE(late);
  EXPECT_EQ(late.error().kind, CallError::Kind::kFrameGone);
  EXPECT_EQ(Run("agentCameFirst"), "true");
}

TEST_F(EngineTest, FramesAndTheirElementsFindEachOther) {
  Show("<p></p><iframe id=a></iframe><iframe id=b sandbox srcdoc='x'></iframe>");
  Await([&] { return page_->ChildFrames(page_->MainFrame()).size() == 2; });
  const auto children = page_->ChildFrames(page_->MainFrame());
  ASSERT_EQ(children.size(), 2U);
  for (const auto& child : children) {
    const auto node = page_->OwnerElement(child);
    ASSERT_TRUE(node);
    EXPECT_EQ(page_->FrameOfElement(page_->MainFrame(), *node), child);
    EXPECT_EQ(page_->ParentFrame(child), page_->MainFrame());
  }
  EXPECT_EQ(page_->FrameOfElement(page_->MainFrame(), 0), std::nullopt) << "HTML holds no frame";
}

TEST_F(EngineTest, NavigationIsToldAndFailuresKeepTheirAddress) {
  Show("<title>one</title>");
  EXPECT_TRUE(Await([&] { return recorder_.title == "one"; }));
  EXPECT_TRUE(page_->FrameUrl(page_->MainFrame()).starts_with("file:///C:/"));
  page_->Navigate("file:///C:/no such file.htm");
  ASSERT_TRUE(
      Await([&] { return page_->ShowsErrorPage(page_->MainFrame()) && !recorder_.failures.empty(); }));
  EXPECT_EQ(recorder_.failures.front(), "file:///C:/no such file.htm net::ERR_FILE_NOT_FOUND");
  EXPECT_EQ(page_->FrameUrl(page_->MainFrame()), "file:///C:/no%20such%20file.htm");
  // A document shows before it stands in the history.
  EXPECT_TRUE(Await([&] { return page_->Go(-1); }));
  ASSERT_TRUE(Await([&] { return !page_->ShowsErrorPage(page_->MainFrame()); }));
  EXPECT_FALSE(page_->Go(5));
}

TEST_F(EngineTest, PagesKnowLocalFilesByTheirWindowsAddress) {
  const std::string script = ToWindowsAddress(FileWith("var loaded = 'from the drive'"));
  Show("<script src='" + script + "'></script><title>" + script + "</title>");
  EXPECT_EQ(Run("loaded"), "\"from the drive\"");
  EXPECT_EQ(Run("location.href"), "\"" + page_->FrameUrl(page_->MainFrame()) + "\"");
  // From a page's own script, and as a parent folder's file.
  Run("location.href = '../' + location.pathname.split('/').slice(-2).join('/') + '?again'");
  EXPECT_TRUE(Await([&] { return Run("location.search + loaded") == "\"?againfrom the drive\""; }));
}

TEST_F(EngineTest, AlertBlocksItsCallWhileOthersAreAnswered) {
  recorder_.on_box = [this] {
    EXPECT_EQ(Run("document.title"), "\"under the box\"");
    recorder_.answer_box({true, "typed"});
  };
  Show("<title>under the box</title>");
  EXPECT_EQ(Run("alert('a\\nb'); 1"), "1");
  EXPECT_EQ(Run("confirm('sure?')"), "true");
  EXPECT_EQ(Run("prompt('name', 'none')"), "\"typed\"");
  ASSERT_EQ(recorder_.boxes.size(), 3U);
  EXPECT_EQ(recorder_.boxes[0].text, "a\nb");
  EXPECT_EQ(recorder_.boxes[2].default_text, "none");
}

TEST_F(EngineTest, ABoxAnsweredLaterLetsTheCallWait) {
  static std::function<void()> later;
  later = [this] { recorder_.answer_box({false, ""}); };
  recorder_.on_box = [] {
    SetTimer(nullptr, 0, 300, [](HWND, UINT, UINT_PTR id, DWORD) {
      KillTimer(nullptr, id);
      later();
    });
  };
  EXPECT_EQ(Run("[confirm('x'), prompt('y')]"), "[false,null]");
}

TEST_F(EngineTest, ABoxGoesWithItsPage) {
  page_->Navigate(FileWith("<script>alert('while loading')</script>"));
  ASSERT_TRUE(Await([&] { return recorder_.boxes.size() == 1; }));
  const auto stale_answer = recorder_.answer_box;
  Show("<title>next</title>");
  EXPECT_EQ(recorder_.boxes_gone, 1);
  stale_answer({true, ""});
  EXPECT_EQ(Run("document.title"), "\"next\"");
}

TEST_F(EngineTest, ADebuggerStatementOfThePageDoesNotStopIt) {
  EXPECT_EQ(Run("(function f() { debugger; return 7; })()"), "7");
}

TEST_F(EngineTest, AModalDialogTakesArgumentsAndGivesItsValueBack) {
  Recorder dialog;
  recorder_.other_listener = &dialog;
  const std::string address = FileWith(
      "<script>window.seen = dialogArguments.n;"
      "setTimeout(() => { returnValue = {doubled: seen * 2}; close(); }, 100)</script>");
  Show("<title>opener</title>");
  EXPECT_EQ(Run("showModalDialog('" + ToWindowsAddress(address) + "', {n: 21}, 'dialogWidth:9px')"),
            "{\"doubled\":42}");
  EXPECT_TRUE(dialog.closed);
  EXPECT_FALSE(dialog.crashed);
}

class PopupTest : public EngineTest {
 protected:
  void SetUp() override {
    EngineTest::SetUp();
    recorder_.other_listener = &popup_;
    Show("<title>opener</title>");
  }
  /// Runs a script that opens a window, and waits until the page in it is loaded.
  void Open(const std::string& script) {
    Run("var address = '" +
        ToWindowsAddress(FileWith("<title>popup</title><script>saw = agentCameFirst</script>")) + "';" +
        script);
    EXPECT_TRUE(Await([&] { return !popup_.events.empty() && popup_.events.back() == "finished"; }));
    ASSERT_NE(recorder_.other_page, nullptr);
    EXPECT_EQ(Run(*recorder_.other_page, "saw"), "true");
  }
  Recorder popup_;
};

TEST_F(PopupTest, OpensForAScriptAndClosesItself) {
  Open("void window.open(address)");
  EXPECT_EQ(Run(*recorder_.other_page, "window.opener !== null"), "true");
  EXPECT_TRUE(Await([&] { return popup_.title == "popup"; }))
      << "told although the page took over a blank window";
  Run(*recorder_.other_page, "window.close()");
  EXPECT_TRUE(Await([&] { return popup_.closed; }));
}

TEST_F(PopupTest, OpensForALinkThatHidesItsOpener) {
  Open(
      "var a = document.createElement('a'); a.href = address; a.target = '_blank'; a.rel = 'noopener';"
      "document.documentElement.append(a); a.click()");
  recorder_.other_page->Close();
  EXPECT_TRUE(popup_.closed);
}

TEST_F(EngineTest, CrashedAndClosedPagesAnswerAtOnce) {
  page_->Navigate("chrome://crash");
  ASSERT_TRUE(Await([&] { return recorder_.closed; }));
  EXPECT_TRUE(recorder_.crashed);
  const auto call = page_->Call(page_->MainFrame(), "add");
  ASSERT_FALSE(call);
  EXPECT_EQ(call.error().kind, CallError::Kind::kEngineGone);
  EXPECT_TRUE(Browser().IsAlive());
}

void Drag(Page& page, int from_x, int to_x, int y) {
  using Type = MouseInput::Type;
  page.Mouse({Type::kMove, from_x, y, MouseButton::kNone, 0, 0, 0});
  page.Mouse({Type::kPress, from_x, y, MouseButton::kLeft, kLeftHeld, 1, 0});
  for (int step = 1; step <= 10; ++step) {
    page.Mouse({Type::kMove, from_x + (to_x - from_x) * step / 10, y, MouseButton::kNone, kLeftHeld, 0, 0});
  }
  page.Mouse({Type::kRelease, to_x, y, MouseButton::kLeft, 0, 1, 0});
}

TEST_F(EngineTest, NoMoveOfADragIsLost) {
  page_->SetViewport(800, 600, 0, 0);
  Show(
      "<script>var log = []; for (const type of ['mousedown', 'mousemove', 'mouseup'])"
      "addEventListener(type, e => log.push(type[5] + e.clientX + '/' + e.buttons + e.isTrusted))</script>");
  Drag(*page_, 100, 200, 50);
  EXPECT_TRUE(Await([&] { return Run("log.length") == "13"; })) << Run("log.join(' ')");
  EXPECT_EQ(Run("log.slice(0, 4).join(' ') + log.at(-1)"),
            "\"m100/0true d100/1true m110/1true m120/1trueu200/0true\"");
}

TEST_F(EngineTest, ADraggableElementIsDropped) {
  page_->SetViewport(800, 600, 0, 0);
  Show(
      "<body style='margin:0'><p draggable=true style='width:80px;height:80px;margin:0' ondragstart="
      "\"event.dataTransfer.setData('text', 'cargo')\">x</p><div "
      "style='position:absolute;left:300px;top:0;width:99px;"
      "height:99px' ondragover='event.preventDefault()' ondrop=\"event.preventDefault();"
      "dropped=event.dataTransfer.getData('text')\"></div><script>var dropped = ''</script>");
  Drag(*page_, 20, 330, 40);
  EXPECT_TRUE(Await([&] { return Run("dropped") == "\"cargo\""; }));
}

TEST_F(EngineTest, KeysTypeAndEdit) {
  Show("<input id=i autofocus><script>i.focus()</script>");
  const auto press = [&](unsigned key, const wchar_t* text, unsigned modifiers = 0) {
    page_->Key({true, key, 0, false, false, modifiers, text});
    page_->Key({false, key, 0, false, false, modifiers, L""});
  };
  press('A', L"a");
  press('B', L"B", kShift);
  press(VK_PACKET, L"中");
  press('Z', L"z");
  press(VK_BACK, L"\b");
  EXPECT_TRUE(Await([&] { return Run("i.value") == "\"aB中\""; })) << Run("i.value");
  press('A', L"\x01", kCtrl);
  press(VK_DELETE, L"");
  EXPECT_TRUE(Await([&] { return Run("i.value") == "\"\""; })) << Run("i.value");
}

TEST_F(EngineTest, ADropDownIsReportedAndTakesTheChoice) {
  page_->SetViewport(800, 600, 0, 0);
  Show(
      "<body style='margin:0'><select id=s "
      "style='position:absolute;left:40px;top:50px;width:90px;height:20px' "
      "onchange='changed=value'><option>one<option disabled>two<option>three</select>");
  page_->Mouse({MouseInput::Type::kPress, 60, 60, MouseButton::kLeft, kLeftHeld, 1, 0});
  page_->Mouse({MouseInput::Type::kRelease, 60, 60, MouseButton::kLeft, 0, 1, 0});
  ASSERT_TRUE(Await([&] { return recorder_.lists.size() == 1; }));
  const DropDown& list = recorder_.lists[0];
  EXPECT_EQ(list.options, (std::vector<std::string>{"one", "two", "three"}));
  EXPECT_EQ(list.enabled, (std::vector<bool>{true, false, true}));
  EXPECT_EQ(list.left, 40);
  EXPECT_EQ(list.bottom, 70);
  EXPECT_EQ(list.selected, 0);
  recorder_.choose_item(2);
  EXPECT_TRUE(Await([&] { return Run("window.changed") == "\"three\""; }));
}

TEST_F(EngineTest, PicturesFollowThePageItsSizeAndItsNavigation) {
  const auto pixel_is = [&](std::uint32_t color, int width) {
    return Await([&] {
      const auto picture = page_->LatestPicture();
      return picture != nullptr && picture->width() == width && (picture->pixels()[5] & 0xFFFFFF) == color;
    });
  };
  page_->SetViewport(400, 300, 0, 0);
  page_->SetPainting(true);
  Show("<body style='background:#ff0000'>");
  EXPECT_TRUE(pixel_is(0xFF0000, 400));
  Run("document.body.style.background = '#0000ff'");
  EXPECT_TRUE(pixel_is(0x0000FF, 400));
  page_->SetViewport(500, 300, 0, 0);
  EXPECT_TRUE(pixel_is(0x0000FF, 500));
  page_->SetPainting(false);
  Show("<body style='background:#00ff00'>");
  page_->SetPainting(true);
  EXPECT_TRUE(pixel_is(0x00FF00, 500));
}

TEST(FileAddress, GoesBothWays) {
  struct Row {
    const char* given;
    const char* linux;
    const char* windows;
  };
  for (const auto& [given, linux, windows] : {
           Row{"Z:\\tmp\\a b.htm", "file:///tmp/a%20b.htm", "file:///Z:/tmp/a%20b.htm"},
           Row{"file:///Z:/tmp/a%20b.htm?x=%20#y", "file:///tmp/a%20b.htm?x=%20#y",
               "file:///Z:/tmp/a%20b.htm?x=%20#y"},
           Row{"file://z:\\tmp\\a.htm", "file:///tmp/a.htm", "file:///Z:/tmp/a.htm"},
           Row{"FILE:///Z|/tmp/a.htm", "file:///tmp/a.htm", "file:///Z:/tmp/a.htm"},
           Row{"file:///Z:/tmp/\xC3\xA9%C3%A9/50%25.htm", "file:///tmp/%C3%A9%C3%A9/50%25.htm",
               "file:///Z:/tmp/%C3%A9%C3%A9/50%25.htm"},
           Row{"http://127.0.0.1/C:/x", "http://127.0.0.1/C:/x", "http://127.0.0.1/C:/x"},
           Row{"about:blank", "about:blank", "about:blank"},
       }) {
    EXPECT_EQ(ToWindowsAddress(given), windows);
    EXPECT_EQ(ToLinuxAddress(given), linux);
    EXPECT_EQ(ToWindowsAddress(linux), windows);
  }
}

}  // namespace
}  // namespace testbrowser::engine
