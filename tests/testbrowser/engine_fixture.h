// What tests of the engine share: one Chromium, pages from texts, and a listener that remembers.
#pragma once

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "engine/engine.h"

namespace testbrowser::engine {

/// Remembers what the page told, and answers boxes, dialogs and popups as the test says.
class Recorder : public PageListener {
 public:
  void OnLoadStarted(const FrameId&) override { events.emplace_back("started"); }
  void OnNavigated(const FrameId&, const std::string& url, bool) override { addresses.push_back(url); }
  void OnDocumentReady(const FrameId&) override { events.emplace_back("ready"); }
  void OnLoadFinished(const FrameId&) override { events.emplace_back("finished"); }
  void OnNavigationFailed(const FrameId&, const std::string& url, const std::string& error) override {
    failures.push_back(url + " " + error);
  }
  void OnTitleChanged(const std::string& new_title) override { title = new_title; }
  void OnPicture() override { ++pictures; }
  void OnMessageBox(const ScriptBox& box, std::function<void(BoxAnswer)> answer) override {
    boxes.push_back(box);
    answer_box = std::move(answer);
    if (on_box) on_box();
  }
  void OnMessageBoxGone() override { ++boxes_gone; }
  void OnModalDialog(const ModalDialog& dialog) override {
    dialog.page->SetListener(other_listener);
    other_page = dialog.page;
  }
  void OnPopup(std::shared_ptr<Page> page) override {
    page->SetListener(other_listener);
    other_page = std::move(page);
  }
  void OnDropDown(const DropDown& list, std::function<void(int)> choose) override {
    lists.push_back(list);
    choose_item = std::move(choose);
  }
  void OnFileChooser(bool, std::function<void(std::vector<std::string>)> choose) override { choose({}); }
  void OnClosed(bool was_crash) override {
    closed = true;
    crashed = was_crash;
  }

  std::vector<std::string> events, addresses, failures;
  std::string title;
  int pictures = 0;
  std::vector<ScriptBox> boxes;
  std::function<void(BoxAnswer)> answer_box;
  std::function<void()> on_box;
  int boxes_gone = 0;
  std::vector<DropDown> lists;
  std::function<void(int)> choose_item;
  PageListener* other_listener = nullptr;
  std::shared_ptr<Page> other_page;
  bool closed = false, crashed = false;
};

class EngineTest : public testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  /// Dispatches window messages until the condition holds; false after ten seconds.
  static bool Await(const std::function<bool()>& condition);
  /// Navigates to a file with this text and waits until it is loaded.
  void Show(const std::string& html);
  /// A new file with this text, as an address.
  static std::string FileWith(const std::string& html);
  /// The value of a script in the main frame, as JSON; "!" and the error's text when it fails.
  static std::string Run(Page& page, const std::string& script);
  std::string Run(const std::string& script) { return Run(*page_, script); }
  /// The same by a call of the agent, as COM objects ask.
  std::string Read(const FrameId& frame, const std::string& script);
  std::string Read(const std::string& script) { return Read(page_->MainFrame(), script); }
  static Engine& Browser();

  Recorder recorder_;
  std::shared_ptr<Page> page_;
};

}  // namespace testbrowser::engine
