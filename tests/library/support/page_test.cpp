// The shared browser and the recorder.
#include "support/page_test.h"

#include <windows.h>
#include <map>
#include <stdexcept>

#include "com/json.h"

namespace quillmate::test {
namespace {

using com::JsonPtr;

struct Desk {
  PageServer server;
  std::map<int, PageServer> elsewhere;
  std::unique_ptr<Browser> browser;
  int pages = 0;
};
std::unique_ptr<Desk> desk;

std::string StringMember(const cJSON* object, const char* name) {
  const cJSON* member = cJSON_GetObjectItemCaseSensitive(object, name);
  return cJSON_IsString(member) ? member->valuestring : "";
}

int IntMember(const cJSON* object, const char* name) {
  const cJSON* member = cJSON_GetObjectItemCaseSensitive(object, name);
  return cJSON_IsNumber(member) ? member->valueint : 0;
}

/// What follows would look at the wrong page: the test ends here.
void Demand(const char* command, const std::string& target) {
  const Envelope answer = Call(command, {{"target", target}});
  if (!answer.success) throw std::runtime_error(command + (" " + target) + ": " + answer.log);
}

PageEvent ParseEvent(const cJSON* item) {
  return {StringMember(item, "type"), StringMember(item, "target"),
          IntMember(item, "x"),       IntMember(item, "y"),
          IntMember(item, "button"),  cJSON_IsTrue(cJSON_GetObjectItemCaseSensitive(item, "trusted")) != 0,
          StringMember(item, "key")};
}

}  // namespace

const std::string kRecorder = R"(<script>
window.seen = [];
function record(event) {
  var target = event.target;
  seen.push({type: event.type, target: target.id || target.tagName || '', x: event.clientX | 0, y: event.clientY | 0,
             button: event.button | 0, trusted: event.isTrusted === true, key: event.key || ''});
}
('mousedown mouseup click dblclick contextmenu mousemove dragstart dragover drop dragend ' +
 'keydown keyup input change focus').split(' ').forEach(function (type) {
  window.addEventListener(type, record, true);
});
</script>)";

void PageTest::SetUpTestSuite() {
  desk = std::make_unique<Desk>();
  RestartBrowser();
}

void PageTest::TearDownTestSuite() { desk.reset(); }

std::string PageTest::Serve(const std::string& path, const std::string& html) {
  return desk->server.Page(path, html);
}

std::string PageTest::ServeFrom(int origin, const std::string& path, const std::string& html) {
  return origin == 0 ? Serve(path, html) : desk->elsewhere[origin].Page(path, html);
}

void PageTest::Show(const std::string& html) {
  const std::string url = Serve("/page" + std::to_string(++desk->pages), html);
  // A new page in the same tab keeps the frame that was selected in the old one.
  Demand("selectframe", "relative=top");
  Demand("open", url);
}

std::string PageTest::Script(const std::string& script) {
  Envelope answer = StillRunning();
  for (int round = 0; round < 10 && answer == StillRunning(); ++round) {
    const ULONGLONG begin = GetTickCount64();
    answer = Call("executescript", {{"value", script}});
    if (answer == StillRunning()) {
      EXPECT_GE(GetTickCount64() - begin, 900u) << "given up too early";
    }
  }
  return TextOf(answer);
}

bool PageTest::AwaitBox() {
  for (int round = 0; round < 200; ++round) {
    for (HWND box = nullptr; (box = FindWindowExW(nullptr, box, L"#32770", nullptr)) != nullptr;) {
      if (GetWindow(box, GW_OWNER) == TheBrowser().Frame() && IsWindowVisible(box)) return true;
    }
    Sleep(25);
  }
  return false;
}

std::vector<PageEvent> PageTest::Events() {
  const JsonPtr array(cJSON_Parse(Script("JSON.stringify(seen)").c_str()));
  std::vector<PageEvent> events;
  const cJSON* item = nullptr;
  cJSON_ArrayForEach(item, array.get()) events.push_back(ParseEvent(item));
  return events;
}

std::vector<PageEvent> PageTest::EventsUntil(const std::string& type) {
  for (int round = 0;; ++round) {
    auto events = Events();
    if (round == 60 || !OfType(events, type).empty()) return events;
    Sleep(50);
  }
}

std::string PageTest::TextOf(const Envelope& envelope) {
  const JsonPtr text(cJSON_Parse(envelope.result.c_str()));
  return cJSON_IsString(text.get()) ? text->valuestring : "";
}

Browser& PageTest::TheBrowser() { return *desk->browser; }

void PageTest::RestartBrowser() {
  desk->browser.reset();
  const std::string url = Serve("/start", "<!doctype html><title>start</title>");
  desk->browser = std::make_unique<Browser>(url);
  Demand("selectwindow", "url=" + url);
}

std::vector<PageEvent> OfType(const std::vector<PageEvent>& events, const std::string& type) {
  std::vector<PageEvent> result;
  for (const PageEvent& event : events) {
    if (event.type == type) result.push_back(event);
  }
  return result;
}

std::string TypesOf(const std::vector<PageEvent>& events) {
  std::string types;
  for (const PageEvent& event : events) {
    if (event.type == "mousemove" || event.type == "dragover" || event.type == "focus") continue;
    types += (types.empty() ? "" : " ") + event.type;
  }
  return types;
}

}  // namespace quillmate::test
