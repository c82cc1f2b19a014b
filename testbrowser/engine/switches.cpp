#include "engine/switches.h"

#include <cstdlib>
#include <map>

namespace testbrowser::engine {
namespace {

std::map<std::string, std::string, std::less<>>& Switches() {
  static std::map<std::string, std::string, std::less<>> switches;
  return switches;
}

}  // namespace

void SetSwitch(std::string_view setting) {
  const auto end = setting.find('=');
  const std::string name(setting.substr(0, end));
  if (end == std::string_view::npos || end + 1 == setting.size()) {
    Switches().erase(name);
  } else {
    Switches()[name] = setting.substr(end + 1);
  }
}

std::string SwitchText(std::string_view name, std::string_view usual) {
  const auto found = Switches().find(name);
  return found != Switches().end() ? found->second : std::string(usual);
}

int SwitchNumber(std::string_view name, int usual) {
  const std::string text = SwitchText(name);
  return text.empty() ? usual : std::atoi(text.c_str());
}

}  // namespace testbrowser::engine
