#include "arguments.h"

#include <charconv>
#include <map>

namespace quillmate::selftest {
namespace {

std::string Check(const Options& options) {
  if (!options.browser.empty() && options.browser != "ie" && options.browser != "edge")
    return "--browser takes ie or edge, not " + options.browser;
  if (options.limit_s <= 0) return "--limit takes a number of seconds";
  return {};
}

int NumberOf(const std::string& text) {
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size() ? number : 0;
}

}  // namespace

std::expected<Options, std::string> ParseOptions(std::span<const std::string> arguments) {
  Options options;
  std::string limit = std::to_string(options.limit_s);
  const std::map<std::string_view, std::string*> texts = {
      {"--browser", &options.browser}, {"--filter", &options.filter}, {"--report", &options.report},
      {"--dll", &options.dll},         {"--area", &options.area},     {"--limit", &limit}};
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& argument = arguments[i];
    if (const auto text = texts.find(argument); text != texts.end()) {
      if (++i == arguments.size() || arguments[i].empty())
        return std::unexpected(argument + " lacks its value");
      *text->second = arguments[i];
    } else if (argument == "--input" || argument == "--no-input") {
      options.input = argument == "--input" ? Input::kTake : Input::kLeave;
    } else if (argument == "--list") {
      options.list = true;
    } else if (argument == "--help" || argument == "-h") {
      options.help = true;
    } else {
      return std::unexpected("unknown option " + argument);
    }
  }
  options.limit_s = NumberOf(limit);
  if (std::string error = Check(options); !error.empty()) return std::unexpected(std::move(error));
  return options;
}

}  // namespace quillmate::selftest
