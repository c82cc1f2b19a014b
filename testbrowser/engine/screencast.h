// The pictures of one page, while they are wanted.
#pragma once

#include <functional>
#include <memory>

#include "engine/picture_decoder.h"
#include "engine/session.h"

namespace testbrowser::engine {

class Screencast {
 public:
  /// @param on_picture told that Latest is a new one.
  Screencast(const Session& session, std::function<void()> on_picture)
      : session_(session), on_picture_(std::move(on_picture)) {}

  void Start();
  void Stop();
  /// Asks for a picture of the page as it is now.
  void Renew();
  /// A frame came; parameters of Page.screencastFrame.
  void AddFrame(const cJSON* params);
  std::shared_ptr<const Picture> Latest() const { return latest_; }

 private:
  void Show(std::shared_ptr<const Picture> picture);

  const Session& session_;
  std::function<void()> on_picture_;
  std::shared_ptr<const Picture> latest_;
  std::unique_ptr<PictureDecoder> decoder_;  ///< while pictures are wanted
};

}  // namespace testbrowser::engine
