#include "session/session.h"

#include <algorithm>

namespace quillmate {

WindowHolder* Session::ValidHolder() {
  return current_ != nullptr && current_->holder != nullptr && current_->holder->IsValid()
             ? current_->holder.get()
             : nullptr;
}

void Session::SelectTarget(std::unique_ptr<WindowHolder> holder) {
  if (current_ != nullptr) KeepReference(std::move(current_->holder));
  ReplaceTarget(std::move(holder));
}

void Session::ReplaceTarget(std::unique_ptr<WindowHolder> holder) {
  ClearTarget();
  auto record = std::make_unique<CurrentTarget>();
  record->holder = std::move(holder);
  current_ = std::move(record);
}

void Session::EnsureTarget() {
  if (current_ == nullptr) ReplaceTarget(nullptr);
}

void Session::ClearTarget() {
  if (const auto record = std::move(current_)) LetGo(std::move(record->holder));
}

void Session::KeepReference(std::unique_ptr<WindowHolder> holder) {
  if (holder == nullptr || holder->Surface() == nullptr) return;
  // One reference a surface is enough, so that a host which selects all day does not grow.
  const bool kept = std::ranges::any_of(earlier_, [&](const auto& earlier) {
    return com::IsSameObject(earlier->Surface(), holder->Surface());
  });
  if (!kept) earlier_.push_back(std::move(holder));
}

/// To release a surface that hangs would hang too, so that one is kept.
void Session::LetGo(std::unique_ptr<WindowHolder> holder) {
  if (holder != nullptr && !holder->Answers()) KeepReference(std::move(holder));
}

}  // namespace quillmate
