#include "doctor.h"

#include <algorithm>
#include <string>

#include "json.h"
#include "utf8.h"

namespace quillmate::player {
namespace {

constexpr int kWindows11 = 22000;  // the first build
constexpr int kUnscaled = 96;      // dots per inch
constexpr unsigned kUtf8 = 65001;

std::string Quoted(std::string_view text) { return "\"" + std::string(text) + "\""; }

std::string List(std::span<const std::string> names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : ", ") + Quoted(name);
  return text;
}

bool IsRetired(const Facts& facts) {
  return facts.browser_disabled || (facts.windows_build >= kWindows11 && !facts.server);
}

Finding CheckDesktop(const Facts& facts) {
  if (facts.service_session)
    return {"desktop", Health::kProblem, "This program runs as a service, which has no desktop.",
            "Run the robot in a user's session, for instance by a task that starts at log-on."};
  if (!facts.connected)
    return {
        "desktop", Health::kProblem, "The session is disconnected: there is no screen to click on.",
        "Keep the remote session open, or give it back to the machine's own screen with \"tscon\" instead of "
        "closing the window."};
  if (facts.input_desktop != "Default")
    return {"desktop", Health::kProblem,
            "The desktop is locked, or a question of Windows' own covers it: keys and clicks do not arrive.",
            "Unlock the desktop, and switch off the screen saver and the locking for the robot's user."};
  return {"desktop", Health::kOk, "The desktop is connected and unlocked.", ""};
}

Finding CheckIntegrity(const Facts& facts) {
  for (const BrowserFact& browser : facts.browsers) {
    if (browser.integrity > facts.integrity)
      return {"integrity", Health::kProblem,
              "The browser " + Quoted(browser.title) +
                  " runs with higher rights than this program: Windows keeps clicks and keys from it.",
              "Start the browser and the robot with the same rights, best without \"Run as administrator\"."};
  }
  constexpr int kHigh = 0x3000;
  if (facts.integrity >= kHigh)
    return {"integrity", Health::kWarning, "This program runs as administrator.",
            "Run it as an ordinary user: browsers that the user starts then have the same rights."};
  return {"integrity", Health::kOk, "Robot and browsers have the same rights.", ""};
}

Finding CheckScaling(const Facts& facts) {
  for (const MonitorFact& monitor : facts.monitors) {
    if (monitor.dpi != kUnscaled)
      return {"scaling", Health::kWarning,
              "Screen " + std::to_string(monitor.number) + " is scaled to " +
                  std::to_string(monitor.dpi * 100 / kUnscaled) +
                  " %: clicks and pictures may miss their place.",
              "Set \"Scale\" to 100 % in the display settings, log off and on again."};
  }
  return {"scaling", Health::kOk, "The display is not scaled.", ""};
}

Finding CheckZoom(const Facts& facts) {
  const int zoom = facts.zoom.value_or(100);
  if (zoom != 100)
    return {"zoom", Health::kWarning,
            "New browser windows open with a zoom of " + std::to_string(zoom) +
                " %: clicks and pictures may miss their place.",
            "Press Ctrl+0 in the browser."};
  return {"zoom", Health::kOk, "The browser's zoom is 100 %.", ""};
}

Finding CheckProtectedMode(const Facts& facts) {
  static constexpr std::array<bool, 4> kDefaults = {false, false, true, true};
  static constexpr std::array<std::string_view, 4> kZones = {"local intranet", "trusted sites", "internet",
                                                             "restricted sites"};
  std::array<std::string, 2> zones;  // off, on
  for (std::size_t i = 0; i < kZones.size(); ++i) {
    std::string& names = zones[facts.protected_mode[i].value_or(kDefaults[i]) ? 1 : 0];
    names += (names.empty() ? "" : ", ") + std::string(kZones[i]);
  }
  if (zones[0].empty() || zones[1].empty())
    return {"protected-mode", Health::kOk, "Protected mode is the same in every zone.", ""};
  return {
      "protected-mode", Health::kWarning,
      "Protected mode is on in some zones (" + zones[1] + ") and off in others (" + zones[0] +
          "): a tab that goes from one to the other gets a new process, and the robot has to find it again.",
      "Make it the same in all four zones: \"Internet Options\", \"Security\", \"Enable Protected Mode\"."};
}

Finding CheckEngine(const Facts& facts) {
  if (!facts.has_engine)
    return {"engine", Health::kProblem, "Internet Explorer's engine is not installed.",
            "Switch on the Windows feature \"Internet Explorer 11\" or \"Internet Explorer mode\"."};
  if (IsRetired(facts))
    return {"engine", facts.has_edge ? Health::kWarning : Health::kProblem,
            std::string("Internet Explorer is retired here") + (facts.browser_disabled ? " by policy" : "") +
                ": its engine runs inside Edge only.",
            facts.has_edge ? "Let Edge open the pages in IE mode before the robot selects them."
                           : "Install Edge and have it open the pages in IE mode."};
  if (!facts.has_browser)
    return {"engine", Health::kProblem, "Internet Explorer is not registered: no browser can be started.",
            "Switch on the Windows feature \"Internet Explorer 11\"."};
  return {"engine", Health::kOk, "Internet Explorer is there.", ""};
}

Finding CheckEdge(const Facts& facts) {
  if (facts.edge_comes_to_front)
    return {"edge", Health::kWarning, "A policy brings Edge to the front whenever it is active.",
            "Switch the policy InternetExplorerSetForegroundWhenActive off for the robot's user."};
  if (!IsRetired(facts)) return {"edge", Health::kOk, "Edge's IE mode is not needed here.", ""};
  if (!facts.has_edge) return {"edge", Health::kProblem, "Edge is not installed.", "Install Edge."};
  if (facts.ie_mode_level != 1)
    return {
        "edge", Health::kWarning, "No policy switches Edge's IE mode on.",
        "Set the policies InternetExplorerIntegrationLevel to 1 and InternetExplorerIntegrationSiteList to a "
        "list of the pages' sites; or reload each page in IE mode by hand."};
  if (!facts.has_site_list)
    return {"edge", Health::kWarning, "Edge's IE mode is on, but no list says for which sites.",
            "Set the policy InternetExplorerIntegrationSiteList."};
  return {"edge", Health::kOk, "Edge's IE mode is on, with a list of sites.", ""};
}

Finding CheckHungWindows(const Facts& facts) {
  if (facts.hung_windows.empty()) return {"hung-windows", Health::kOk, "Every window answers.", ""};
  return {"hung-windows", Health::kWarning, "These windows do not answer: " + List(facts.hung_windows) + ".",
          "End their programs in the Task Manager: they can keep other windows from coming to the front."};
}

Finding CheckCodePage(const Facts& facts) {
  const std::string page = std::to_string(facts.code_page);
  const bool fits = facts.language_code_page == 0 || facts.language_code_page == facts.code_page;
  if (!fits && facts.code_page != kUtf8)
    return {"code-page", Health::kWarning,
            "The system's code page is " + page + ", but the user's language needs " +
                std::to_string(facts.language_code_page) + ": letters that it lacks become question marks.",
            "Set \"Language for non-Unicode programs\" in the region's administrative settings."};
  return {"code-page", Health::kOk, "The system's code page is " + page + ".", ""};
}

Finding CheckRobots(const Facts& facts) {
  if (facts.robots.empty()) return {"robots", Health::kOk, "No other robot is at work on this desktop.", ""};
  return {"robots", Health::kWarning,
          "Other programs use the library on this desktop: " + List(facts.robots) + ".",
          "Let one robot at a time use the mouse and the keyboard, or give each its own session."};
}

std::string_view Name(Health health) {
  static constexpr std::array<std::string_view, 3> kNames = {"ok", "warning", "problem"};
  return kNames[static_cast<std::size_t>(health)];
}

}  // namespace

std::vector<Finding> Examine(const Facts& facts) {
  return {CheckDesktop(facts),       CheckIntegrity(facts), CheckScaling(facts), CheckZoom(facts),
          CheckProtectedMode(facts), CheckEngine(facts),    CheckEdge(facts),    CheckHungWindows(facts),
          CheckCodePage(facts),      CheckRobots(facts)};
}

bool IsReady(std::span<const Finding> findings) {
  return std::ranges::none_of(findings, [](const Finding& f) { return f.health == Health::kProblem; });
}

std::string FindingsText(std::span<const Finding> findings) {
  constexpr std::size_t kHealthWidth = 9;
  constexpr std::size_t kCheckWidth = 16;
  const std::string indent(kHealthWidth + kCheckWidth, ' ');
  std::string text;
  for (const Finding& finding : findings) {
    text += FitTo(Name(finding.health), kHealthWidth) + FitTo(finding.check, kCheckWidth) + finding.message +
            "\n";
    if (!finding.advice.empty()) text += indent + "What to do: " + finding.advice + "\n";
  }
  return text + (IsReady(findings) ? "A robot can run on this machine.\n"
                                   : "A robot cannot run on this machine as it is.\n");
}

std::string FindingsJson(std::span<const Finding> findings) {
  const JsonPtr object(cJSON_CreateObject());
  cJSON_AddBoolToObject(object.get(), "ready", IsReady(findings));
  cJSON* const checks = cJSON_AddArrayToObject(object.get(), "checks");
  for (const Finding& finding : findings) {
    cJSON* const check = cJSON_CreateObject();
    cJSON_AddItemToArray(checks, check);
    cJSON_AddStringToObject(check, "check", std::string(finding.check).c_str());
    cJSON_AddStringToObject(check, "health", std::string(Name(finding.health)).c_str());
    cJSON_AddStringToObject(check, "message", finding.message.c_str());
    cJSON_AddStringToObject(check, "advice", finding.advice.c_str());
  }
  return PrintCompact(object.get()) + "\n";
}

}  // namespace quillmate::player
