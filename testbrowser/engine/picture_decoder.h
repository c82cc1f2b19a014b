// Turns PNG files into pictures on a thread of its own: decoding takes longer than the UI thread should be
// away.
#pragma once

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

#include "engine/picture.h"
#include "engine/wakeup_window.h"

namespace testbrowser::engine {

class PictureDecoder {
 public:
  /// @param on_picture called on the thread that makes this object, for each picture; null when it could not
  /// be decoded.
  explicit PictureDecoder(std::function<void(std::shared_ptr<const Picture>)> on_picture);
  ~PictureDecoder();
  PictureDecoder(const PictureDecoder&) = delete;
  PictureDecoder& operator=(const PictureDecoder&) = delete;

  /// @param base64 a PNG file. One that is still waiting for its turn is dropped: the latest picture wins.
  void Decode(std::string base64);

 private:
  void Work();
  std::optional<std::string> NextFile();
  void Deliver();

  std::function<void(std::shared_ptr<const Picture>)> on_picture_;
  WakeupWindow wakeup_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::optional<std::string> file_;
  std::optional<std::shared_ptr<const Picture>> decoded_;
  bool ending_ = false;
  std::thread worker_;  // last: it uses the members above
};

}  // namespace testbrowser::engine
