#include "shell/page_host.h"

#include <oleacc.h>

#include "shell/application.h"

namespace testbrowser::shell {

PageHost::~PageHost() {
  if (page_ == nullptr) return;
  page_->SetListener(nullptr);
  dom::ForgetSite(*page_);
}

void PageHost::Attach(std::shared_ptr<engine::Page> page, HWND parent) {
  page_ = std::move(page);
  document_ = dom::ContainerDocument(page_, this);
  server_ = std::make_unique<shell::ServerWindow>(parent, page_, *this);
  page_->SetListener(this);
  server_->ReportPlace();
}

void PageHost::ReportPlace() {
  if (server_ == nullptr) return;
  server_->ReportPlace();
  if (IsWindowVisible(server_->hwnd()) == 0) drop_down_.reset();
}

void PageHost::FocusPage() {
  if (HWND window = ServerWindow(); window != nullptr) SetFocus(window);
}

LRESULT PageHost::DocumentResult(WPARAM wparam) {
  return LresultFromObject(__uuidof(IHTMLDocument2), wparam, document_.Get());
}

bool PageHost::HandleShortcut(const engine::KeyInput& key) {
  if (drop_down_ == nullptr || !drop_down_->IsOpen()) return OnShortcut(key);
  drop_down_->OnKey(key.virtual_key);
  return true;
}

void PageHost::OnPicture() { server_->Repaint(); }

void PageHost::OnMessageBox(const engine::ScriptBox& box, std::function<void(engine::BoxAnswer)> answer) {
  box_ = std::make_unique<NativeBox>(TopLevel(), box, [this, answer](engine::BoxAnswer given) {
    box_.reset();
    answer(std::move(given));
  });
}

void PageHost::OnMessageBoxGone() { box_.reset(); }

void PageHost::OnModalDialog(const engine::ModalDialog& dialog) {
  application_.OpenDialog(TopLevel(), dialog);
}

void PageHost::OnPopup(std::shared_ptr<engine::Page> page) {
  application_.OpenPopup(TopLevel(), std::move(page));
}

void PageHost::OnDropDown(const engine::DropDown& list, std::function<void(int)> choose) {
  drop_down_ = std::make_unique<DropDownList>(ServerWindow(), list, std::move(choose));
}

void PageHost::OnFileChooser(bool several, std::function<void(std::vector<std::string>)> choose) {
  choose(ChooseFiles(TopLevel().hwnd(), several));
}

void PageHost::OnClosed(bool) {
  drop_down_.reset();
  box_.reset();
  dom::ForgetSite(*page_);
  OnPageGone();
}

}  // namespace testbrowser::shell
