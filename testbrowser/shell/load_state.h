// How far a tab's loading is, in the browser object's two measures. They are not each other's opposite: right
// after a Navigate call the state is "loading" and the browser not busy yet; after a click on a link the
// state stays "complete" until the new document has come.
#pragma once

#include <windows.h>
#include <exdisp.h>
#include <algorithm>
#include <map>

#include "engine/page_listener.h"

namespace testbrowser::shell {

class LoadState {
 public:
  /// Whether a download has begun and is not over. Whatever starts a navigation returns before that.
  bool busy() const {
    constexpr ULONGLONG kUntilDownloadBegins = 100;  // ms
    const ULONGLONG now = GetTickCount64();
    return std::ranges::any_of(loading_,
                               [now](const auto& load) { return now - load.second >= kUntilDownloadBegins; });
  }
  READYSTATE ready_state() const { return ready_state_; }
  /// Whether a first document has come.
  bool has_document() const { return has_document_; }

  /// The browser object was told to go somewhere.
  void Asked() { ready_state_ = READYSTATE_LOADING; }
  void Started(const engine::FrameId& frame) { loading_.emplace(frame, GetTickCount64()); }
  /// The main frame shows a new document: its old child frames are gone.
  void DocumentCame(const engine::FrameId& main_frame) {
    has_document_ = true;
    Started(main_frame);
    DropMissing([&](const engine::FrameId& frame) { return frame == main_frame; });
    ready_state_ = READYSTATE_LOADED;
  }
  void DocumentParsed() { ready_state_ = READYSTATE_INTERACTIVE; }
  void Finished(const engine::FrameId& frame, bool is_main) {
    loading_.erase(frame);
    if (is_main) ready_state_ = READYSTATE_COMPLETE;
  }
  /// Loading was given up; what is there stays.
  void Stopped() {
    loading_.clear();
    ready_state_ = READYSTATE_COMPLETE;
  }
  /// Forgets frames that were removed while they loaded.
  template <class Exists>
  void DropMissing(Exists exists) {
    std::erase_if(loading_, [&](const auto& load) { return !exists(load.first); });
  }

 private:
  std::map<engine::FrameId, ULONGLONG> loading_;  ///< by frame: since when, in the system's running time
  READYSTATE ready_state_ = READYSTATE_UNINITIALIZED;
  bool has_document_ = false;
};

}  // namespace testbrowser::shell
