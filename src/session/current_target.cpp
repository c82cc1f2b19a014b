// The current target and the surfaces selected before it.
#include "session/current_target.h"

#include <algorithm>

namespace quillmate::session {
namespace {

struct Targets {
  std::unique_ptr<CurrentTarget> current;
  // Surfaces that were selected once keep their reference, as hosts rely on: a browser started unseen by
  // automation would end with its last one.
  std::vector<std::unique_ptr<WindowHolder>> earlier;
};

// Never destroyed: the library is unloaded under the loader lock, where releasing another process's object
// hangs.
Targets& State() {
  static Targets& targets = *new Targets;
  return targets;
}

void KeepReference(std::unique_ptr<WindowHolder> holder) {
  if (holder == nullptr || holder->Surface() == nullptr) return;
  // One reference a surface is enough, so that a host which selects all day does not grow.
  const bool kept = std::ranges::any_of(State().earlier, [&](const auto& earlier) {
    return com::IsSameObject(earlier->Surface(), holder->Surface());
  });
  if (!kept) State().earlier.push_back(std::move(holder));
}

/// Lets go of a surface that answers. To release one that hangs would hang too, so it is kept.
void LetGo(std::unique_ptr<WindowHolder> holder) {
  if (holder != nullptr && !holder->Answers()) KeepReference(std::move(holder));
}

}  // namespace

CurrentTarget* Current() { return State().current.get(); }

WindowHolder* ValidHolder() {
  const CurrentTarget* target = Current();
  return target != nullptr && target->holder != nullptr && target->holder->IsValid() ? target->holder.get()
                                                                                     : nullptr;
}

void SelectTarget(std::unique_ptr<WindowHolder> holder) {
  if (State().current != nullptr) KeepReference(std::move(State().current->holder));
  ReplaceTarget(std::move(holder));
}

void ReplaceTarget(std::unique_ptr<WindowHolder> holder) {
  ClearTarget();
  auto record = std::make_unique<CurrentTarget>();
  record->holder = std::move(holder);
  State().current = std::move(record);
}

void EnsureTarget() {
  if (State().current == nullptr) ReplaceTarget(nullptr);
}

void ClearTarget() {
  if (const auto record = std::move(State().current)) LetGo(std::move(record->holder));
}

}  // namespace quillmate::session
