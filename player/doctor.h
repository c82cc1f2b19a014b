// Whether a machine can run a robot, judged from facts that were read beforehand.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quillmate::player {

struct BrowserFact {
  std::string title;
  int integrity = 0;  ///< level of its process, as Windows numbers it
};

struct MonitorFact {
  int number = 1;
  int dpi = 96;  ///< dots per inch that programs see at full resolution
};

/// Everything that a check looks at. A value that could not be read is absent.
struct Facts {
  std::string input_desktop;  ///< that gets the keys; empty when this process may not open it
  bool connected = true;      ///< whether somebody, or a screen, is connected to the session
  bool service_session = false;
  int integrity = 0x2000;
  std::vector<BrowserFact> browsers;
  std::vector<MonitorFact> monitors;
  std::optional<int> zoom;  ///< new windows' zoom, in percent
  /// Whether protected mode is on, in the zones local intranet, trusted, internet and restricted.
  std::array<std::optional<bool>, 4> protected_mode;
  bool has_engine = true;
  bool has_browser = true;        ///< Internet Explorer as a program of its own
  bool browser_disabled = false;  ///< by policy
  int windows_build = 0;
  bool server = false;
  bool has_edge = false;
  std::optional<int> ie_mode_level;  ///< policy InternetExplorerIntegrationLevel
  bool has_site_list = false;
  bool edge_comes_to_front = false;  ///< policy InternetExplorerSetForegroundWhenActive
  std::vector<std::string> hung_windows;
  unsigned code_page = 1252;
  unsigned language_code_page = 1252;  ///< of the user's language; 0 for one without
  std::vector<std::string>
      robots;  ///< programs of this session, other than this one, with the library in them
};

enum class Health { kOk, kWarning, kProblem };

struct Finding {
  std::string_view check;
  Health health = Health::kOk;
  std::string message;
  std::string advice;  ///< what to do; empty where nothing is needed
};

/// @return one finding a check, in a fixed order.
std::vector<Finding> Examine(const Facts& facts);

/// @return whether nothing keeps a robot from running.
bool IsReady(std::span<const Finding> findings);

std::string FindingsText(std::span<const Finding> findings);
/// @return one line of JSON.
std::string FindingsJson(std::span<const Finding> findings);

}  // namespace quillmate::player
