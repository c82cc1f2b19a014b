#include "shell/application.h"

#include <shlobj.h>
#include <algorithm>
#include <iostream>

#include "com/encoding.h"
#include "dom/document.h"
#include "engine/switches.h"
#include "shell/frame.h"
#include "shell/modal_dialog.h"
#include "shell/tab.h"

namespace testbrowser::shell {
namespace {

template <class Owners, class Owned>
auto FindOwner(Owners& owners, const Owned* owned) {
  return std::ranges::find_if(owners, [owned](const auto& owner) { return owner.get() == owned; });
}

/// The user's.
std::string DownloadsFolder() {
  wchar_t* path = nullptr;
  std::string folder;
  if (SUCCEEDED(SHGetKnownFolderPath(FOLDERID_Downloads, KF_FLAG_CREATE, nullptr, &path))) {
    folder = quillmate::com::ToUtf8(path);
  }
  CoTaskMemFree(path);
  return folder;
}

}  // namespace

Application::Application(ShellKind kind) : kind_(std::move(kind)) {}
Application::~Application() = default;

std::shared_ptr<engine::Page> Application::OpenPage() {
  if (engine_ == nullptr || !engine_->IsAlive()) {
    auto started = engine::Engine::Start({.scripts = dom::AgentScripts(), .downloads = DownloadsFolder()});
    if (!started) {
      std::cerr << "testbrowser: " << started.error() << std::endl;
      return nullptr;
    }
    engine_ = std::move(*started);
  }
  return engine_->OpenPage(nullptr);
}

Tab& Application::OpenFrame(std::shared_ptr<engine::Page> page, int show) {
  const auto frame = std::make_shared<Frame>(*this, kind_);
  frames_.push_back(frame);
  Tab& tab = frame->AddTab(std::move(page), true);
  ShowWindow(frame->hwnd(), show);
  return tab;
}

void Application::OpenPopup(const TopLevelWindow& opener, std::shared_ptr<engine::Page> page) {
  auto frame = FindOwner(frames_, &opener);
  if (frame == frames_.end()) frame = frames_.begin();  // a dialog's popup
  if (frame != frames_.end()) (*frame)->AddTab(std::move(page), true);
}

void Application::OpenDialog(TopLevelWindow& opener, const engine::ModalDialog& dialog) {
  dialogs_.push_back(std::make_unique<ModalDialogWindow>(*this, opener, dialog));
}

void Application::Retire(std::unique_ptr<PageHost> host) { retired_hosts_.push_back(std::move(host)); }

void Application::OnFrameGone(const Frame& frame) {
  const auto found = FindOwner(frames_, &frame);
  if (found == frames_.end()) return;
  retired_frames_.push_back(std::move(*found));
  frames_.erase(found);
  if (frames_.empty()) PostQuitMessage(0);
}

void Application::OnDialogGone(const ModalDialogWindow& dialog) {
  const auto found = FindOwner(dialogs_, &dialog);
  if (found == dialogs_.end()) return;
  Retire(std::move(*found));
  dialogs_.erase(found);
}

bool Application::RefusesCalls() const {
  const bool by_box = engine::SwitchText("box-calls") == "retry-later";
  const bool by_load = engine::SwitchText("busy-calls") == "retry-later";
  if (!by_box && !by_load) return false;
  const auto refuses = [&](const std::unique_ptr<Tab>& tab) {
    return (by_box && tab->HasBox()) || (by_load && tab->IsBusy());
  };
  return std::ranges::any_of(frames_,
                             [&](const auto& frame) { return std::ranges::any_of(frame->tabs(), refuses); });
}

void Application::Run() {
  MSG message{};
  // A frame may be asked for after the last one was closed and before the loop has noticed.
  do {
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
      TranslateMessage(&message);
      DispatchMessageW(&message);
      // Only here, outside every handler, is nothing retired on the stack.
      retired_hosts_.clear();
      retired_frames_.clear();
    }
  } while (!frames_.empty());
}

}  // namespace testbrowser::shell
