#include "opened_browsers.h"

namespace quillmate::player {
namespace {

bool OpensBrowsers(std::string_view command) { return command == "open" || command == "new_browser"; }

}  // namespace

OpenedBrowsers::OpenedBrowsers(std::span<const BrowserWindow> windows)
    : known_(windows.begin(), windows.end()) {
  for (const BrowserWindow& window : windows) processes_of_others_.insert(window.process);
}

OpenedBrowsers::News OpenedBrowsers::After(std::string_view command, bool returned,
                                           std::span<const BrowserWindow> windows) {
  const bool opens = still_opening_ || OpensBrowsers(command);
  still_opening_ = opens && !returned;
  News news;
  for (const BrowserWindow& window : windows) {
    if (!known_.insert(window).second) continue;
    if (!opens && !own_processes_.contains(window.process)) {
      processes_of_others_.insert(window.process);
      continue;
    }
    news.windows.push_back(window);
    if (!processes_of_others_.contains(window.process) && own_processes_.insert(window.process).second)
      news.processes.push_back(window.process);
  }
  return news;
}

}  // namespace quillmate::player
