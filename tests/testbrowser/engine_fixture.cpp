#include "engine_fixture.h"

#include <algorithm>
#include <fstream>

namespace testbrowser::engine {

Engine& EngineTest::Browser() {
  static const std::unique_ptr<Engine> engine = [] {
    auto started =
        Engine::Start({{"window[Symbol.for('testbrowser.agent')] = {"
                        "  add: (a, b) => a + b,"
                        "  read: (text) => (0, eval)(text),"
                        "  fail: () => { throw new TypeError('broken'); },"
                        "  loop: () => { for (;;); },"
                        "  element: (n) => document.querySelectorAll('*')[n],"
                        "  numberOf: (e) => [...document.querySelectorAll('*')].indexOf(e) };"
                        "window.agentCameFirst = document.documentElement === null ||"
                        "  document.scripts.length === 0;"}});
    if (!started) {
      ADD_FAILURE() << started.error();
      std::exit(1);
    }
    return std::move(*started);
  }();
  return *engine;
}

void EngineTest::SetUp() {
  page_ = Browser().OpenPage(&recorder_);
  ASSERT_NE(page_, nullptr);
}

void EngineTest::TearDown() {
  if (page_ != nullptr) page_->Close();
}

bool EngineTest::Await(const std::function<bool()>& condition) {
  constexpr DWORD kLimit = 10000;
  const ULONGLONG end = GetTickCount64() + kLimit;
  while (!condition()) {
    if (GetTickCount64() > end) return false;
    MsgWaitForMultipleObjects(0, nullptr, FALSE, 50, QS_ALLINPUT);
    for (MSG message; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE;) DispatchMessageW(&message);
  }
  return true;
}

std::string EngineTest::FileWith(const std::string& html) {
  static int number = 0;
  const std::string name =
      "engine_test_" + std::to_string(GetCurrentProcessId()) + "_" + std::to_string(++number);
  char folder[MAX_PATH];
  GetTempPathA(MAX_PATH, folder);
  const std::string path = folder + name + ".html";
  std::ofstream(path, std::ios::binary) << html;
  return path;
}

void EngineTest::Show(const std::string& html) {
  const auto finished = std::ranges::count(recorder_.events, "finished");
  page_->Navigate(FileWith(html));
  ASSERT_TRUE(Await([&] { return std::ranges::count(recorder_.events, "finished") > finished; }));
}

std::string EngineTest::Run(Page& page, const std::string& script) {
  const auto value = page.Evaluate(page.MainFrame(), script);
  return value ? PrintJson(value->get()) : "!" + value.error().text;
}

std::string EngineTest::Read(const FrameId& frame, const std::string& script) {
  const auto value = page_->Call(frame, "read", JsonArray(JsonText(script)));
  return value ? PrintJson(value->get()) : "!" + value.error().text;
}

}  // namespace testbrowser::engine
