// The command that moves the point of view into a frame and back.
#include <string>
#include <string_view>

#include "api/messages.h"
#include "commands.h"
#include "locate/current_page.h"

namespace quillmate {
namespace {

constexpr std::string_view kTop = "relative=top";

/// JSON text passes for a locator too, and then names no frame.
bool IsAccepted(const std::string& target) {
  return IsFrameLocator(target) ||
         com::JsonPtr(cJSON_ParseWithOpts(target.c_str(), nullptr, true)) != nullptr;
}

void UpdateFramePath(std::vector<std::string>& path, std::string locator) {
  if (locator != "relative=parent") {
    path.push_back(std::move(locator));
  } else if (!path.empty()) {
    path.pop_back();
  }
}

}  // namespace

Result SelectFrame(Session& session, const CommandParams& params) {
  std::string target = params.Get("target");
  if (!IsAccepted(target)) return Fail(messages::kInvalidFrameLocator);
  // The way out, also when a frame of the path is gone.
  if (target == kTop && IsTargetUsable(session)) {
    session.Current()->frame_path.clear();
    return Done();
  }
  auto path = WalkFrames(session);
  if (!path) return Fail(messages::kFrameNotFound);
  if (EnterFrame(*path, target) != S_OK) return Fail(messages::kCantFindFrameBy + target);
  UpdateFramePath(session.Current()->frame_path, std::move(target));
  return Done();
}

}  // namespace quillmate
