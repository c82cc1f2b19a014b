// The frames of one page: what each shows, and the script context of its main world.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "engine/json.h"
#include "engine/page_listener.h"

namespace testbrowser::engine {

class FrameTree {
 public:
  struct Frame {
    std::optional<FrameId> parent;
    std::vector<FrameId> children;
    std::string url;  ///< Windows' form; the address asked for when it failed
    bool is_error_page = false;
    bool is_loading = false;
    bool is_committed = true;   ///< of the load under way: its document is there
    bool stop_is_owed = false;  ///< a load's end is told twice, and the second time is still to come
    std::string context;  ///< Chromium's unique id of the main world's context; empty between two documents
    int context_number = 0;  ///< Chromium's other id of it, which some events use
  };

  explicit FrameTree(FrameId main) : main_(std::move(main)) { frames_[main_]; }

  const FrameId& main() const { return main_; }
  /// @return null for a frame that is gone.
  const Frame* Find(const FrameId& id) const;
  Frame* Find(const FrameId& id) { return const_cast<Frame*>(std::as_const(*this).Find(id)); }

  std::optional<FrameId> FrameOfContext(int context_number) const;

  // What the protocol's events say. Parameters as in the protocol.
  /// @param tree Page.getFrameTree's answer; tells of frames that were there before we listened.
  void AddExisting(const cJSON* tree);
  void Attach(const FrameId& id, const FrameId& parent);
  void Detach(const FrameId& id);
  /// A new document in the frame.
  void Commit(const cJSON* frame);
  void AddContext(const cJSON* context);
  void RemoveContext(const std::string& unique_id);
  void RemoveAllContexts();

 private:
  FrameId main_;
  std::map<FrameId, Frame> frames_;
};

}  // namespace testbrowser::engine
