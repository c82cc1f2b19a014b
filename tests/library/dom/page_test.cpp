// Finding elements, walking frames, reading, clicking and running scripts on one page, and what is left when
// the page hangs or its browser is killed.
#include <windows.h>
#include <oleauto.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <mutex>

#include "com/encoding.h"
#include "support/browser.h"
#include "support/import_hook.h"
#include "support/library.h"
#include "support/page_server.h"

namespace quillmate::test {
namespace {

constexpr char kBody[] =
    "<title>Page</title><p id=p class='x y' style='color:red'>Hello</p>"
    "<a name=q href='a.html?b=c' title='one, two'>one</a><a name=q title='x'>two</a>"
    "<div class=list><span>s1</span><span>s2</span></div><div class=list><span>s3</span></div>"
    "<input id=i disabled value=5 maxlength=7><label id=l for=i>l</label>"
    "<button id=b onclick=\"document.title='clicked'\">B</button>"
    "<button id=al onclick=\"alert('hi');document.title='after'\">A</button>"
    "<iframe id=f1 name=n1 src='/frame.html'></iframe>";

class Page : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    server = std::make_unique<PageServer>();
    foreign_server = std::make_unique<PageServer>();
    frame = server->Page("/frame.html", "<p id=p>inside</p><iframe name=deep src='/deep.html'></iframe>");
    server->Page("/deep.html", "<p id=p>deep</p>");
    const auto foreign = foreign_server->Page("/foreign.html", "<p id=p>foreign</p>");
    const auto body = std::string(kBody) + "<iframe id=f2 src='" + foreign + "'></iframe>";
    standard = server->Page("/standard.html", "<!doctype html>" + body, "Set-Cookie: k=v\r\n");
    quirks = server->Page("/quirks.html", body);
    browser = std::make_unique<Browser>(standard);
  }
  static void TearDownTestSuite() {
    browser.reset();
    server.reset();
    foreign_server.reset();
  }
  void SetUp() override {
    ASSERT_EQ(Call("selectwindowuntop", {{"target", "index=0"}, {"tab-status", "loading"}}), Succeeded());
    ASSERT_EQ(Call("open", {{"target", standard}, {"resize-max", "False"}}), Succeeded());
  }

  static inline std::unique_ptr<PageServer> server;
  static inline std::unique_ptr<PageServer> foreign_server;
  static inline std::unique_ptr<Browser> browser;
  static inline std::string frame;
  static inline std::string standard;
  static inline std::string quirks;
};

/// Commands wait one second for a script; a loaded machine may need longer for one that does nothing.
Envelope Evaluate(const char* script) {
  Envelope answer = StillRunning();
  for (int tries = 0; tries < 5 && answer == StillRunning(); ++tries) {
    const ULONGLONG begin = GetTickCount64();
    answer = Call("executescript", {{"value", script}});
    if (answer == StillRunning()) {
      EXPECT_GE(GetTickCount64() - begin, 900u) << "given up too early";
    }
  }
  return answer;
}

TEST_F(Page, LocatorsFindTheirFirstElementOrSayWhereTheyFailed) {
  const struct {
    const char* target;
    Envelope answer;
  } rows[] = {
      {"id='p'", Answered("Hello")},
      {"\"id=p\"", Failed("Parameter verification failed! The element location mechanism not support.")},
      {"id='p", Failed("Element not found!")},
      {"name=q", Answered("one")},
      {"name=q[2]", Answered("two")},
      {"name=q[0]", Failed("Element not found!")},
      {"name=q[@title='x']", Answered("two")},
      {"class=y", Answered("Hello")},
      {"xpath=//*[@id='p']", Answered("Hello")},
      {"xpath=//*[@class='list'][2]",
       Failed("Find element failed in 1's Xpath node [ //*[@class='list'][2] ]!")},
      {"xpath=//div[2]/span", Answered("s3")},
      {"xpath=//div/span[2]", Answered("s2")},
      {"xpath=//span[text()='s3']/..", Answered("s3")},
      {"xpath=//span[text()='s2']/./../span[1]", Answered("s1")},
      {"xpath=//a[contains(@title,'e, t')]", Answered("one")},
      {"xpath=//a[starts-with(text(), 'tw')]", Answered("two")},
      {"xpath=//a[contains(@href,'b=c')]",
       Failed("Find element failed in 1's Xpath node [ //a[contains(@href,'b=c')] ]!")},
      {"xpath=/html/body/nope", Failed("Find element failed in 3's Xpath node [ /nope[] ]!")},
      {"xpath=/html/nope/p", Failed("Find element failed in 2's Xpath node [ /nope[] ]!")},
      {"xpath=", Failed("Element not found!")},
  };
  for (const auto& row : rows) EXPECT_EQ(Call("gettext", {{"target", row.target}}), row.answer) << row.target;
}

TEST_F(Page, AttributesReadAsWrittenInOldModesAndNew) {
  const struct {
    const char* target;
    const char* name;
    Envelope answer;
  } rows[] = {
      {"id=p", "class", Answered("x y")},
      {"id=p", "CLASS", Answered("x y")},
      {"id=p", "Id", Answered("p")},
      {"id=p", "name", Failed("Get attribute failed!")},
      {"name=q", "href", Answered("a.html?b=c")},
      {"id=i", "disabled", Answered("")},
      {"id=i", "maxlength", Answered("7")},
      {"id=l", "for", Answered("i")},
      {"id=p", "title", Failed("Get attribute failed!")},
      {"id=i", "type", Failed("Get attribute failed!")},
      {"id=i", "checked", Failed("Get attribute failed!")},
  };
  for (const std::string& page : {standard, quirks}) {
    ASSERT_EQ(Call("open", {{"target", page}, {"resize-max", "False"}}), Succeeded());
    for (const auto& row : rows) {
      EXPECT_EQ(Call("getattribute", {{"target", row.target}, {"value", row.name}}), row.answer)
          << page << ' ' << row.name;
    }
    // Old modes hand out an object that spells the style anew.
    EXPECT_EQ(Call("getattribute", {{"target", "id=p"}, {"value", "style"}}),
              Answered(page == standard ? "color:red" : "color: red;"));
  }
}

TEST_F(Page, FramesAreWalkedRelativeToTheOneSelected) {
  const auto text = [] { return Call("gettext", {{"target", "id=p"}}); };
  for (const std::string& target : {std::string("index=0"), std::string("id='f1'"), std::string("name=n1"),
                                    std::string("src=/frame.html"), "src=" + frame}) {
    ASSERT_EQ(Call("selectframe", {{"target", target}}), Succeeded()) << target;
    EXPECT_EQ(text(), Answered("inside")) << target;
    ASSERT_EQ(Call("selectframe", {{"target", "relative=top"}}), Succeeded());
  }
  Call("selectframe", {{"target", "name=n1"}});
  EXPECT_EQ(Call("selectframe", {{"target", "name=deep"}}), Succeeded());
  EXPECT_EQ(text(), Answered("deep"));
  EXPECT_EQ(Call("selectframe", {{"target", "relative=parent"}}), Succeeded());
  EXPECT_EQ(text(), Answered("inside"));
  EXPECT_EQ(Call("selectframe", {{"target", "name=none"}}), Failed("Can't find frame by name=none"));
  EXPECT_EQ(text(), Answered("inside"));
  Call("executescript", {{"value", "frameElement.remove()"}});
  EXPECT_EQ(text(), Failed("Element not found!"));
  EXPECT_EQ(Call("selectframe", {{"target", "relative=parent"}}), Failed("Frame not found!"));
  EXPECT_EQ(Call("selectframe", {{"target", "relative=top"}}), Succeeded());
  EXPECT_EQ(text(), Answered("Hello"));
}

TEST_F(Page, AFrameOfAnotherSiteIsReachedThroughItsBrowser) {
  ASSERT_EQ(Call("selectframe", {{"target", "id=f2"}}), Succeeded());
  EXPECT_EQ(Call("gettext", {{"target", "id=p"}}), Answered("foreign"));
}

/// As the system's automation writes it.
std::string NotANumber() {
  VARIANT number;
  VariantInit(&number);
  number.vt = VT_R8;
  number.dblVal = std::numeric_limits<double>::quiet_NaN();
  VARIANT text;
  VariantInit(&text);
  EXPECT_EQ(VariantChangeTypeEx(&text, &number, LOCALE_INVARIANT, 0, VT_BSTR), S_OK);
  const std::string result = com::ToAnsi(std::wstring_view(text.bstrVal, SysStringLen(text.bstrVal)));
  VariantClear(&text);
  return result;
}

std::mutex debug_lock;
std::wstring debug_output;

void WINAPI NoteDebugOutput(const wchar_t* text) {
  const std::lock_guard lock(debug_lock);
  debug_output += text;
}

// In newer document modes and in old ones, by every way to the page's evaluation that the browser leaves open.
TEST_F(Page, ScriptsRunInOldModesAndNewAndTellTheirErrors) {
  const ImportHook hook("OutputDebugStringW", NoteDebugOutput);
  ASSERT_TRUE(hook.IsInForce());
  for (const std::string& page : {standard, quirks}) {
    ASSERT_EQ(Call("open", {{"target", page}, {"resize-max", "False"}}), Succeeded());
    EXPECT_EQ(Evaluate("var kept = 1; document.title + kept"), Answered("Page1"));
    EXPECT_EQ(Evaluate("kept"), Answered("1")) << "in the page's global scope";
    debug_output.clear();
    EXPECT_EQ(Evaluate("throw new Error('out of stock')"), Failed("Execute script failed!"));
    EXPECT_EQ(debug_output, L"Execute script failed: out of stock\r\n");
  }
}

TEST_F(Page, AScriptThatOpensAWindowSucceeds) {
  EXPECT_EQ(Evaluate("opened = window.open('about:blank')"), Answered("[object]"));
  EXPECT_EQ(Evaluate("opened.close()"), Answered(""));
}

TEST_F(Page, ThePageSourceIsTheWholeDocument) {
  const Envelope source = Call("pagesource");
  EXPECT_TRUE(source.success);
  EXPECT_TRUE(source.result.starts_with("\"<html") || source.result.starts_with("\"<HTML")) << source;
  EXPECT_TRUE(source.result.contains(">Hello</")) << source;
  EXPECT_TRUE(source.result.ends_with("</html>\"") || source.result.ends_with("</HTML>\"")) << source;
}

TEST_F(Page, ScriptsAnswerTheirValuesText) {
  const struct {
    const char* script;
    Envelope answer;
  } rows[] = {
      {"1+1", Answered("2")},
      {"'a'+'b'", Answered("ab")},
      {"null", Answered("")},
      {"undefined", Answered("")},
      {"1==1", Answered("true")},
      {"1==2", Answered("false")},
      {"1.5", Answered("1.5")},
      {"''", Answered("")},
      {"'\u00fc'", Answered("\xFC")},
      {"0/0", Answered(NotANumber())},
      {"window", Answered("[object]")},
      {"document.body", Answered("[object]")},
      {"({a: 1})", Answered("[object Object]")},
      {"[1, 'b']", Answered("1,b")},
      {"throw 1", Failed("Execute script failed!")},
      {"no syntax (", Failed("Execute script failed!")},
  };
  for (const auto& row : rows) EXPECT_EQ(Evaluate(row.script), row.answer) << row.script;
}

TEST_F(Page, CookiesAreATextOfTheStructuredGroup) { EXPECT_EQ(Call("getcookie"), Answered("k=v")); }

TEST_F(Page, AClickThatOpensABoxIsToldAsRunning) {
  EXPECT_EQ(Call("click", {{"target", "id=b"}}), Answered(""));
  EXPECT_EQ(Evaluate("document.title"), Answered("clicked"));
  EXPECT_EQ(Call("click", {{"target", "id=al"}}), StillRunning());
  EXPECT_EQ(Call("gettext", {{"target", "id=p"}}), Answered("Hello"));
  for (int round = 0; round < 200 && IsWindowEnabled(browser->Frame()); ++round) Sleep(25);
  EXPECT_EQ(Call("assertalert"), Succeeded());
  EXPECT_EQ(Evaluate("document.title"), Answered("after"));
}

/// Run under several code pages: texts arrive in the one that holds, and what it cannot hold as a question
/// mark.
TEST_F(Page, TextsOfTheCodePageComeAndGo) {
  const std::string text = GetACP() == 936 ? "订单" : "Grüße";
  const std::string ansi = com::ToAnsi(com::FromUtf8(text));
  const std::string page = server->Page(
      "/texts.html", "<!doctype html><meta charset=utf-8><title>" + text + "</title><p id=" + text +
                         " title='" + text + ", x'>" + text + "</p><input id=i><iframe name=" + text +
                         " srcdoc='<p id=p>inside</p>'></iframe>");
  ASSERT_EQ(Call("open", {{"target", page}, {"resize-max", "False"}}), Succeeded());
  EXPECT_EQ(Call("selectwindowuntop", {{"target", "title=" + text}}), Succeeded());
  for (const std::string& target :
       {"id=" + text, "xpath=//p[@title='" + text + ", x']", "xpath=//p[contains(text(),'" + text + "')]"}) {
    EXPECT_EQ(Call("gettext", {{"target", target}}), Answered(ansi)) << target;
  }
  EXPECT_EQ(Call("gettext", {{"target", "xpath=//" + text}}),
            Failed("Find element failed in 1's Xpath node [ //" + ansi + "[] ]!"));
  EXPECT_EQ(Call("type_m", {{"target", "id=i"}, {"value", text}}), Succeeded());
  EXPECT_EQ(Evaluate(("document.getElementById('i').value + '" + text + "'").c_str()), Answered(ansi + ansi));
  EXPECT_EQ(Evaluate("'\\u0905\\u20ac'"), Answered("?\x80"));
  // JSON's escapes mean the same as their characters, also the one whose second byte is a backslash.
  const std::string escaped = GetACP() == 936 ? "\\u8ba2\\u5355\\u8aa0" : "Gr\\u00fc\\u00dfe";
  const std::string plain = GetACP() == 936 ? "订单誠" : text;
  for (const std::string& value : {escaped, plain}) {
    const std::string parameters = R"({"target":"id=i","value":")" + value + R"("})";
    ASSERT_NE(CallRaw("type_m", parameters.c_str()), nullptr);
    EXPECT_EQ(Evaluate("document.getElementById('i').value"), Answered(com::ToAnsi(com::FromUtf8(plain))))
        << value;
  }
  EXPECT_EQ(Call("selectframe", {{"target", "name=" + text}}), Succeeded());
  EXPECT_EQ(Call("gettext", {{"target", "id=p"}}), Answered("inside"));

  const auto folder = std::filesystem::temp_directory_path();
  const auto picture = folder / com::FromUtf8(text + ".png");
  EXPECT_EQ(Call("takescreenshot", {{"save-path", folder.string()}, {"file-name", text + ".png"}}),
            Succeeded());
  EXPECT_TRUE(std::filesystem::remove(picture));
}

// Written last, for it ends the browser: every answer comes within a few seconds, whatever the page does.
TEST_F(Page, AHungPageAndAKilledBrowserFailInBoundedTime) {
  const ULONGLONG begin = GetTickCount64();
  EXPECT_EQ(Call("executescript", {{"value", "for(;;);"}}), StillRunning());
  EXPECT_EQ(Call("gettext", {{"target", "id=p"}}), Failed("Element not found!"));
  EXPECT_EQ(Call("refresh"), Failed("Refresh Fail!"));
  browser->Kill();
  EXPECT_EQ(Call("gettext", {{"target", "id=p"}}), Failed("Element not found!"));
  EXPECT_EQ(Call("currenturl"), Failed("Frame not found!"));
  EXPECT_LT(GetTickCount64() - begin, 15000u);
  const Browser next(quirks);
  EXPECT_EQ(Call("selectwindowuntop", {{"target", "title=Page"}, {"tab-status", "loading"}}), Succeeded());
  EXPECT_EQ(Call("gettext", {{"target", "id=p"}}), Answered("Hello"));
}

}  // namespace
}  // namespace quillmate::test
