#include "desk.h"

#include <sstream>
#include <stdexcept>

namespace quillmate::bench {

test::Envelope Demand(const char* command, test::Parameters parameters) {
  test::Envelope answer = test::Call(command, parameters);
  if (answer.success) return answer;
  std::ostringstream text;
  text << command << ": " << answer;
  throw std::runtime_error(text.str());
}

Desk::Desk() {
  const std::string start = Serve("/start", "<title>Quillmate bench</title>");
  browser_ = std::make_unique<test::Browser>(start);
  for (int round = 0; round < 100; ++round) {
    if (test::Call("selectwindow", {{"target", "url=" + start}}).success) return;
    Sleep(50);
  }
  throw std::runtime_error("the browser's window is not found");
}

std::string Desk::Serve(const std::string& path, const std::string& html) {
  return server_.Page(path, "<!doctype html>" + html);
}

std::string Desk::Show(const std::string& html) {
  std::string url = Serve("/page" + std::to_string(++pages_), html);
  Demand("selectframe", {{"target", "relative=top"}});
  Demand("open", {{"target", url}});
  return url;
}

}  // namespace quillmate::bench
