#include "engine/screencast.h"

namespace testbrowser::engine {

void Screencast::Start() {
  if (decoder_ != nullptr) return;
  decoder_ = std::make_unique<PictureDecoder>([this](auto picture) { Show(std::move(picture)); });
  session_.Send("Page.startScreencast", JsonObject().Add("format", "png").Take());
}

void Screencast::Stop() {
  if (decoder_ == nullptr) return;
  session_.Send("Page.stopScreencast");
  decoder_.reset();
}

void Screencast::Renew() {
  if (decoder_ == nullptr) return;
  session_.Send("Page.stopScreencast");
  session_.Send("Page.startScreencast", JsonObject().Add("format", "png").Take());
}

void Screencast::AddFrame(const cJSON* params) {
  // Answered at once: Chromium stops after two frames without an answer, and a frame dropped here is an older
  // one.
  session_.Send("Page.screencastFrameAck",
                JsonObject().Add("sessionId", MemberNumber(params, "sessionId")).Take());
  if (decoder_ != nullptr) decoder_->Decode(MemberText(params, "data"));
}

void Screencast::Show(std::shared_ptr<const Picture> picture) {
  if (picture == nullptr) return;
  latest_ = std::move(picture);
  on_picture_();
}

}  // namespace testbrowser::engine
