// Proves the engine alone, without windows and COM: opens pages, calls into them, says how long it took.
#include <windows.h>
#include <cstdio>

#include "engine/engine.h"

using namespace testbrowser::engine;

namespace {

class Printer : public PageListener {
 public:
  void OnLoadStarted(const FrameId& f) override { std::printf("load started %s\n", f.c_str()); }
  void OnNavigated(const FrameId& f, const std::string& url, bool same) override {
    std::printf("navigated %s %s %d\n", f.c_str(), url.c_str(), same);
  }
  void OnDocumentReady(const FrameId& f) override { std::printf("ready %s\n", f.c_str()); }
  void OnLoadFinished(const FrameId& f) override {
    std::printf("finished %s\n", f.c_str());
    ++finished;
  }
  void OnNavigationFailed(const FrameId&, const std::string& url, const std::string& error) override {
    std::printf("failed %s %s\n", url.c_str(), error.c_str());
  }
  void OnTitleChanged(const std::string& title) override { std::printf("title %s\n", title.c_str()); }
  void OnPicture() override { std::printf("picture\n"); }
  void OnMessageBox(const ScriptBox& box, std::function<void(BoxAnswer)> answer) override {
    std::printf("box %s\n", box.text.c_str());
    answer({true, "typed"});
  }
  void OnMessageBoxGone() override { std::printf("box gone\n"); }
  void OnModalDialog(const ModalDialog&) override {}
  void OnPopup(std::shared_ptr<Page>) override { std::printf("popup\n"); }
  void OnDropDown(const DropDown&, std::function<void(int)>) override {}
  void OnClosed(bool crashed) override { std::printf("closed %d\n", crashed); }
  int finished = 0;
};

void Pump(DWORD ms) {
  const ULONGLONG end = GetTickCount64() + ms;
  while (GetTickCount64() < end) {
    MSG m;
    MsgWaitForMultipleObjects(0, nullptr, FALSE, 20, QS_ALLINPUT);
    while (PeekMessageW(&m, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&m);
  }
}

}  // namespace

int main(int argc, char** argv) {
  setvbuf(stdout, nullptr, _IONBF, 0);
  const ULONGLONG start = GetTickCount64();
  auto engine =
      Engine::Start({{"window[Symbol.for('testbrowser.agent')]={add:(a,b)=>a+b,title:()=>document.title}"}});
  if (!engine) {
    std::printf("no engine: %s\n", engine.error().c_str());
    return 1;
  }
  std::printf("started %llu ms\n", GetTickCount64() - start);
  Printer printer;
  auto page = (*engine)->OpenPage(&printer);
  std::printf("open %llu ms %s\n", GetTickCount64() - start, page ? page->MainFrame().c_str() : "NULL");
  if (!page) return 1;
  auto sum = page->Call(page->MainFrame(), "add", JsonArray(JsonNumber(2), JsonNumber(3)));
  std::printf("first call %llu ms: %s\n", GetTickCount64() - start,
              sum ? PrintJson(sum->get()).c_str() : sum.error().text.c_str());
  for (int i = 1; i < argc; ++i) {
    page->Navigate(argv[i]);
    Pump(1500);
    auto title = page->Call(page->MainFrame(), "title");
    std::printf("title: %s\n", title ? PrintJson(title->get()).c_str() : title.error().text.c_str());
  }
  const ULONGLONG before = GetTickCount64();
  for (int i = 0; i < 1000; ++i)
    (void)page->Call(page->MainFrame(), "add", JsonArray(JsonNumber(i), JsonNumber(1)));
  std::printf("1000 calls %llu ms\n", GetTickCount64() - before);
  page->Close();
}
