// The report's file: what stands in it at every moment of a run.
#include "report.h"

#include <stdlib.h>
#include <gtest/gtest.h>

#include <iterator>

#include "fake_host.h"

namespace quillmate::player {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kFailure = R"({"success":false,"result":0,"log":"Element <b> not found!"})";

class ReportTest : public testing::Test {
 protected:
  ReportTest() {
    std::string pattern = (fs::temp_directory_path() / "quillmate-XXXXXX").string();
    folder_ = mkdtemp(pattern.data());
  }
  ~ReportTest() override { fs::remove_all(folder_); }

  std::string Page() const {
    std::ifstream file(folder_ / "report.html", std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
  }

  std::string SavePicture(const std::string& name) {
    std::ofstream(folder_ / name) << "PNG";
    return {};
  }

  fs::path folder_;
};

Outcome OutcomeOf(const Step& step, std::string_view answer) {
  Outcome outcome;
  outcome.step = &step;
  outcome.envelope =
      Envelope::Read(step.command, answer, [](std::string_view bytes) { return std::string(bytes); });
  outcome.failure = outcome.envelope->Mismatch(step.expect);
  outcome.time = std::chrono::milliseconds(41);
  return outcome;
}

Summary AfterStep(std::size_t played) {
  return {.steps = played, .played = played, .failed = 0, .first_failure = 0, .time = {}};
}

TEST_F(ReportTest, IsCompleteUpToTheLastStepThatEnded) {
  const auto steps = ParseScript(
      "{\"command\":\"back\"}\n{\"command\":\"click\",\"target\":\"id=<&\\\"'>\"}\n{\"command\":\"quit\"}",
      {});
  Report report(folder_, "a<b>.jsonl", *steps, [this](const std::string& name) { return SavePicture(name); });
  EXPECT_TRUE(Page().contains("No step has ended yet."));
  report.Started((*steps)[0], {.steps = 3, .played = 0, .failed = 0, .first_failure = 0, .time = {}});
  EXPECT_TRUE(Page().contains("Unfinished: line 1, step 1 of 3, has not ended."));
  report.Finished(OutcomeOf((*steps)[0], R"({"success":true,"result":true})"),
                  {.steps = 3, .played = 1, .failed = 0, .first_failure = 0, .time = {}});
  EXPECT_TRUE(Page().contains("Unfinished: 1 of 3 steps have ended."));
  EXPECT_TRUE(Page().contains("<section id=\"line-1\">"));
  report.Started((*steps)[1], {.steps = 3, .played = 1, .failed = 0, .first_failure = 0, .time = {}});
  report.Finished(OutcomeOf((*steps)[1], kFailure),
                  {.steps = 3, .played = 2, .failed = 1, .first_failure = 2, .time = {}});
  report.Ended(
      {.steps = 3, .played = 2, .failed = 1, .first_failure = 2, .time = std::chrono::milliseconds(82)});
  const std::string page = Page();
  EXPECT_TRUE(report.Good());
  for (const std::string_view part :
       {"<header class=\"failed\">", "1 of 3 steps failed, 1 not played, in 82 ms", "a&lt;b&gt;.jsonl",
        "id=&lt;&amp;&quot;&#39;&gt;", "Element &lt;b&gt; not found!", "flex-grow:41", "<details open>",
        "src=\"data:image/png;base64,UE5H\"", "href=\"line-2.png\"", "Not played", "</html>"})
    EXPECT_TRUE(page.contains(part)) << part;
  EXPECT_FALSE(page.contains("Unfinished"));
  EXPECT_EQ(page.find("<header"), page.rfind("<header"));
}

TEST_F(ReportTest, KeepsTheSummarysPlaceWhateverTheTimes) {
  std::string script;
  for (int i = 0; i < 300; ++i) script += "{\"command\":\"movetoelementwithoffset\"}\n";
  const auto steps = ParseScript(script, {});
  Report report(folder_, "s", *steps, [](const std::string&) { return "no browser"; });
  Summary summary{.steps = 300, .played = 0, .failed = 0, .first_failure = 1, .time = {}};
  for (const Step& step : *steps) {
    report.Started(step, summary);
    Outcome outcome = OutcomeOf(step, kFailure);
    outcome.time = std::chrono::hours(20);
    ++summary.played, ++summary.failed;
    report.Finished(outcome, summary);
  }
  summary.time = std::chrono::hours(6000);
  report.Ended(summary);
  const std::string page = Page();
  EXPECT_EQ(page.substr(page.find("</header>") + 9, page.find("<main>") - page.find("</header>") - 9)
                .find_first_not_of(" \n"),
            std::string::npos);
  EXPECT_TRUE(page.contains("<main>\n<section id=\"line-1\"")) << page.substr(0, 400);
  EXPECT_TRUE(page.contains("No picture of the browser: no browser"));
}

TEST_F(ReportTest, ShowsWhatTheScriptItselfCaptured) {
  const std::string folder = folder_.generic_string();
  const auto steps = ParseScript(
      R"({"command":"takeelementshot","target":"id=a","save-path":")" + folder + R"(","file-name":"a.png"}
{"command":"gettable","by":"id=t"})",
      {});
  SavePicture("a.png");
  Report report(folder_, "s", *steps, [](const std::string&) { return "asked for"; });
  report.Finished(OutcomeOf((*steps)[0], R"({"success":true,"result":true})"), AfterStep(1));
  report.Finished(OutcomeOf((*steps)[1], R"({"success":true,"result":"[[0,1],[\"<a>\",\"\"]]"})"),
                  AfterStep(2));
  EXPECT_TRUE(Page().contains("href=\"a.png\""));
  EXPECT_TRUE(Page().contains("<tr><th>0</th><th>1</th></tr>\n<tr><td>&lt;a&gt;</td><td></td></tr>"));
  EXPECT_TRUE(Page().contains("a table of 1 row"));
  EXPECT_FALSE(Page().contains("asked for"));
}

TEST_F(ReportTest, HoldsAStepBeforeItsPictureIsTaken) {
  const auto steps = ParseScript(R"({"command":"click","target":"id=a"})", {});
  std::string page_then;
  Report report(folder_, "s", *steps, [&](const std::string& name) {
    page_then = Page();
    return SavePicture(name) + "Frame not found!";
  });
  report.Finished(OutcomeOf((*steps)[0], kFailure),
                  {.steps = 1, .played = 1, .failed = 1, .first_failure = 1, .time = {}});
  EXPECT_TRUE(page_then.contains("Element &lt;b&gt; not found!</span>")) << page_then;
  EXPECT_TRUE(page_then.contains("1 of 1 steps have ended")) << page_then;
  const std::string page = Page();
  EXPECT_TRUE(
      page.contains("No picture of the browser: Frame not found!</p>\n<figure><a href=\"line-1.png\">"));
  EXPECT_TRUE(page.ends_with("</figure>\n</section>\n"));
  EXPECT_TRUE(page.contains("<a href=\"#line-1\">The first failure: line 1</a>"));
}

// Failures, each with a picture: from some point on, a step costs the same however long the script is.
TEST_F(ReportTest, GrowsLinearlyWithTheScript) {
  const auto size_after = [this](std::size_t count) {
    std::string script;
    for (std::size_t i = 0; i < count; ++i) script += "{\"command\":\"click\",\"target\":\"id=a\"}\n";
    const auto steps = ParseScript(script, {});
    std::ofstream(folder_ / "picture") << std::string(12'000, 'p');
    Report report(folder_, "s", *steps, [this](const std::string& name) {
      fs::copy_file(folder_ / "picture", folder_ / name, fs::copy_options::overwrite_existing);
      return std::string();
    });
    Summary summary = AfterStep(0);
    summary.steps = count;
    for (const Step& step : *steps) {
      ++summary.played;
      report.Finished(OutcomeOf(step, kFailure), summary);
    }
    report.Ended(summary);
    return Page().size();
  };
  const std::size_t shorter = size_after(400);
  const std::size_t longer = size_after(600);
  EXPECT_LT(longer - shorter, 200U * 1200);
  EXPECT_LT(shorter, 6'500'000U);
  EXPECT_TRUE(Page().contains("title=\"line 595 to 600, 246 ms\""));
  EXPECT_TRUE(Page().contains("loading=\"lazy\" src=\"line-600.png\""));
}

TEST(Links, LeadToFilesOfEveryName) {
  const std::pair<std::string, std::string> rows[] = {
      {"order #4.png", "order%20%234.png"},
      {"50%25/a.png", "50%2525/a.png"},
      {"javascript:x.png", "javascript%3Ax.png"},
      {"C:/shots/é.png", "file:///C:/shots/%C3%A9.png"},
      {"//server/share/a?.png", "file://server/share/a%3F.png"},
      {"/tmp/a.png", "file:///tmp/a.png"},
  };
  for (const auto& [path, link] : rows) EXPECT_EQ(LinkTo(path), link);
}

TEST_F(ReportTest, FindsTheScriptsOwnFilesWhateverTheirKindAndPlace) {
  struct Row {
    std::string name, part;
  };
  const std::string relative = fs::relative(folder_).generic_string();
  for (const Row& row : {Row{"a b.png", "<a href=\"a%20b.png\"><img"}, Row{"a.bmp", "data:image/bmp;base64,"},
                         Row{"a.tif", "<a href=\"a.tif\"></a><figcaption><a href=\"a.tif\">a.tif</a>"}}) {
    const auto steps = ParseScript(
        R"({"command":"takescreenshot","Save-Path":")" + relative + R"(","FILE-NAME":")" + row.name + "\"}",
        {});
    SavePicture(row.name);
    Report report(folder_, "s", *steps, [](const std::string&) { return "asked for"; });
    report.Finished(OutcomeOf((*steps)[0], R"({"success":true,"result":true})"), AfterStep(1));
    EXPECT_TRUE(Page().contains(row.part)) << Page();
  }
}

TEST(Base64, EncodesEveryTailLength) {
  EXPECT_EQ(EncodeBase64(""), "");
  EXPECT_EQ(EncodeBase64("f"), "Zg==");
  EXPECT_EQ(EncodeBase64("fo"), "Zm8=");
  EXPECT_EQ(EncodeBase64("foo"), "Zm9v");
  EXPECT_EQ(EncodeBase64("\xFF\xFE\xFD\xFC"), "//79/A==");
}

}  // namespace
}  // namespace quillmate::player
