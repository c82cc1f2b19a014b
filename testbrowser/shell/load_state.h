// How far a tab's loading is, in the browser object's two measures. They are not each other's opposite: right
// after a Navigate call the state is "loading" and the browser not busy yet; after a click on a link the
// state stays "complete" until the new document has come.
#pragma once

#include <windows.h>
#include <exdisp.h>
#include <set>

#include "engine/page_listener.h"

namespace testbrowser::shell {

class LoadState {
 public:
  bool busy() const { return !loading_.empty(); }
  READYSTATE ready_state() const { return ready_state_; }
  /// Whether a first document has come.
  bool has_document() const { return has_document_; }

  /// The browser object was told to go somewhere.
  void Asked() { ready_state_ = READYSTATE_LOADING; }
  void Started(const engine::FrameId& frame) { loading_.insert(frame); }
  /// The main frame shows a new document: its old child frames are gone.
  void DocumentCame(const engine::FrameId& main_frame) {
    has_document_ = true;
    loading_ = {main_frame};
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
    std::erase_if(loading_, [&](const engine::FrameId& frame) { return !exists(frame); });
  }

 private:
  std::set<engine::FrameId> loading_;
  READYSTATE ready_state_ = READYSTATE_UNINITIALIZED;
  bool has_document_ = false;
};

}  // namespace testbrowser::shell
