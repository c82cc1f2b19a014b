// What the doctor says of a machine: each row breaks one thing of a machine that is fine.
#include "doctor.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

namespace quillmate::player {
namespace {

Facts Healthy() {
  Facts facts;
  facts.input_desktop = "Default";
  facts.browsers = {{"Orders", 0x2000}, {"Protected", 0x1000}};
  facts.monitors = {{1, 96}};
  facts.protected_mode = {true, true, true, true};
  facts.windows_build = 19045;
  return facts;
}

struct Row {
  std::string check;
  Health health;
  std::string part;  ///< of the message
  std::function<void(Facts&)> change;
};

void ExpectOnly(const std::vector<Row>& rows) {
  for (const Row& row : rows) {
    Facts facts = Healthy();
    row.change(facts);
    const std::vector<Finding> findings = Examine(facts);
    const auto finding = std::ranges::find(findings, row.check, &Finding::check);
    ASSERT_NE(finding, findings.end()) << row.check;
    EXPECT_EQ(finding->health, row.health) << row.part;
    EXPECT_TRUE(finding->message.contains(row.part)) << finding->message;
    EXPECT_EQ(finding->advice.empty(), row.health == Health::kOk) << finding->message;
  }
}

TEST(Doctor, FindsNothingWrongWithAMachineThatIsFine) {
  const std::vector<Finding> findings = Examine(Healthy());
  EXPECT_EQ(findings.size(), 10U);
  for (const Finding& finding : findings) EXPECT_EQ(finding.health, Health::kOk) << finding.message;
  EXPECT_TRUE(IsReady(findings));
}

TEST(Doctor, LooksAtTheDesktopAndItsRights) {
  ExpectOnly({
      {"desktop", Health::kProblem, "locked", [](Facts& f) { f.input_desktop = "Winlogon"; }},
      {"desktop", Health::kProblem, "locked", [](Facts& f) { f.input_desktop.clear(); }},
      {"desktop", Health::kProblem, "disconnected", [](Facts& f) { f.connected = false; }},
      {"desktop", Health::kProblem, "service", [](Facts& f) { f.service_session = true; }},
      {"integrity", Health::kProblem, "\"Orders\" runs with higher rights",
       [](Facts& f) { f.browsers[0].integrity = 0x3000; }},
      {"integrity", Health::kWarning, "as administrator", [](Facts& f) { f.integrity = 0x3000; }},
      {"scaling", Health::kWarning, "Screen 2 is scaled to 150 %",
       [](Facts& f) {
         f.monitors.push_back({2, 144});
       }},
      {"hung-windows", Health::kWarning, "\"A\", \"B\"",
       [](Facts& f) {
         f.hung_windows = {"A", "B"};
       }},
      {"robots", Health::kWarning, "\"other.exe\"", [](Facts& f) { f.robots = {"other.exe"}; }},
  });
}

TEST(Doctor, LooksAtTheBrowsersSettings) {
  ExpectOnly({
      {"zoom", Health::kWarning, "125 %", [](Facts& f) { f.zoom = 125; }},
      {"zoom", Health::kOk, "100 %", [](Facts& f) { f.zoom = 100; }},
      {"protected-mode", Health::kWarning,
       "on in some zones (local intranet, trusted sites, restricted sites) and off in others (internet)",
       [](Facts& f) { f.protected_mode[2] = false; }},
      // As Windows comes: on for the internet and restricted sites alone.
      {"protected-mode", Health::kWarning, "off in others (local intranet, trusted sites)",
       [](Facts& f) { f.protected_mode = {}; }},
      {"protected-mode", Health::kOk, "the same",
       [](Facts& f) {
         f.protected_mode = {false, false, false, false};
       }},
      {"code-page", Health::kWarning, "is 1252, but the user's language needs 936",
       [](Facts& f) { f.language_code_page = 936; }},
      {"code-page", Health::kOk, "65001", [](Facts& f) { f.code_page = 65001, f.language_code_page = 936; }},
      {"code-page", Health::kOk, "1252", [](Facts& f) { f.language_code_page = 0; }},
  });
}

TEST(Doctor, LooksAtTheEngineAndAtEdge) {
  const auto eleven = [](Facts& f) { f.windows_build = 22631, f.has_edge = true; };
  ExpectOnly({
      {"engine", Health::kProblem, "not installed", [](Facts& f) { f.has_engine = false; }},
      {"engine", Health::kProblem, "not registered", [](Facts& f) { f.has_browser = false; }},
      {"engine", Health::kProblem, "retired here:", [](Facts& f) { f.windows_build = 22000; }},
      {"engine", Health::kWarning, "retired here:", eleven},
      {"engine", Health::kWarning, "retired here by policy",
       [](Facts& f) { f.browser_disabled = true, f.has_edge = true; }},
      {"engine", Health::kOk, "is there", [](Facts& f) { f.windows_build = 26100, f.server = true; }},
      {"edge", Health::kOk, "not needed", [](Facts& f) { f.has_edge = true; }},
      {"edge", Health::kProblem, "not installed", [](Facts& f) { f.windows_build = 22000; }},
      {"edge", Health::kWarning, "No policy", eleven},
      {"edge", Health::kWarning, "no list says", [&](Facts& f) { eleven(f), f.ie_mode_level = 1; }},
      {"edge", Health::kOk, "with a list",
       [&](Facts& f) { eleven(f), f.ie_mode_level = 1, f.has_site_list = true; }},
      {"edge", Health::kWarning, "to the front", [](Facts& f) { f.edge_comes_to_front = true; }},
  });
}

TEST(Doctor, SaysWhatToDoInWordsAndAsJson) {
  Facts facts = Healthy();
  facts.connected = false;
  const std::vector<Finding> findings = Examine(facts);
  const std::string text = FindingsText(findings);
  EXPECT_TRUE(text.starts_with("problem  desktop         The session is disconnected")) << text;
  EXPECT_TRUE(text.contains("\n                         What to do: Keep the remote session open")) << text;
  EXPECT_TRUE(text.ends_with("\nA robot cannot run on this machine as it is.\n")) << text;
  EXPECT_TRUE(FindingsText(Examine(Healthy())).ends_with("\nA robot can run on this machine.\n"));
  const std::string json = FindingsJson(findings);
  EXPECT_TRUE(
      json.starts_with(R"({"ready":false,"checks":[{"check":"desktop","health":"problem","message":"The)"))
      << json;
  EXPECT_TRUE(json.contains(
      R"({"check":"zoom","health":"ok","message":"The browser's zoom is 100 %.","advice":""})"));
}

}  // namespace
}  // namespace quillmate::player
