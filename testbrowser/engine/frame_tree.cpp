#include "engine/frame_tree.h"

#include <algorithm>

namespace testbrowser::engine {
namespace {

void SetAddress(FrameTree::Frame& frame, const cJSON* description) {
  const std::string failed = MemberText(description, "unreachableUrl");
  frame.is_error_page = !failed.empty();
  frame.url =
      frame.is_error_page ? failed : MemberText(description, "url") + MemberText(description, "urlFragment");
}

}  // namespace

const FrameTree::Frame* FrameTree::Find(const FrameId& id) const {
  const auto found = frames_.find(id);
  return found != frames_.end() ? &found->second : nullptr;
}

void FrameTree::AddExisting(const cJSON* tree) {
  const cJSON* description = Member(tree, "frame");
  const FrameId id = MemberText(description, "id");
  if (const std::string parent = MemberText(description, "parentId"); !parent.empty()) Attach(id, parent);
  if (Frame* frame = Find(id); frame != nullptr && frame->url.empty()) SetAddress(*frame, description);
  const cJSON* child = nullptr;
  cJSON_ArrayForEach(child, Member(tree, "childFrames")) AddExisting(child);
}

void FrameTree::Attach(const FrameId& id, const FrameId& parent) {
  Frame* owner = Find(parent);
  if (owner == nullptr || Find(id) != nullptr) return;
  owner->children.push_back(id);
  frames_[id].parent = parent;
}

void FrameTree::Detach(const FrameId& id) {
  const Frame* frame = Find(id);
  if (frame == nullptr || id == main_) return;
  for (const auto& child : std::vector(frame->children)) Detach(child);
  if (Frame* parent = Find(*frame->parent)) std::erase(parent->children, id);
  frames_.erase(id);
}

void FrameTree::Commit(const cJSON* description) {
  Frame* frame = Find(MemberText(description, "id"));
  if (frame == nullptr) return;
  for (const auto& child : std::vector(frame->children)) Detach(child);
  SetAddress(*frame, description);
  frame->is_committed = true;
}

void FrameTree::AddContext(const cJSON* context) {
  const cJSON* origin = Member(context, "auxData");
  if (!MemberBool(origin, "isDefault")) return;
  Frame* frame = Find(MemberText(origin, "frameId"));
  if (frame == nullptr) return;
  frame->context = MemberText(context, "uniqueId");
  frame->context_number = static_cast<int>(MemberNumber(context, "id"));
}

std::optional<FrameId> FrameTree::FrameOfContext(int context_number) const {
  for (const auto& [id, frame] : frames_) {
    if (frame.context_number == context_number && !frame.context.empty()) return id;
  }
  return {};
}

void FrameTree::RemoveContext(const std::string& unique_id) {
  for (auto& [id, frame] : frames_) {
    if (frame.context == unique_id) frame.context.clear();
  }
}

void FrameTree::RemoveAllContexts() {
  for (auto& [id, frame] : frames_) frame.context.clear();
}

}  // namespace testbrowser::engine
