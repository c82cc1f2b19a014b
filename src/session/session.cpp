#include "session/session.h"

#include <algorithm>
#include <utility>

namespace quillmate {

void ElementRegistry::Remember(std::string name, com::ComPtr<IHTMLElement> element) {
  elements_.insert_or_assign(std::move(name), com::Agile<IHTMLElement>(std::move(element)));
}

com::ComPtr<IHTMLElement> ElementRegistry::Recall(std::string_view name) const {
  const auto entry = elements_.find(name);
  return entry != elements_.end() ? com::ComPtr<IHTMLElement>(entry->second.Get())
                                  : com::ComPtr<IHTMLElement>();
}

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
  if (holder != nullptr) holder->WaitPatiently();
  auto record = std::make_unique<CurrentTarget>();
  record->holder = std::move(holder);
  current_ = std::move(record);
}

void Session::EnsureTarget() {
  if (current_ == nullptr) ReplaceTarget(nullptr);
}

void Session::ClearTarget() { current_.reset(); }

void Session::KeepReference(std::unique_ptr<WindowHolder> holder) {
  if (holder == nullptr || !holder->IsValid()) return;
  std::erase_if(earlier_, [](const auto& earlier) { return earlier->IsWindowGone(); });
  // One reference a surface is enough, so that a host which selects all day does not grow.
  const bool kept =
      std::ranges::any_of(earlier_, [&](const auto& earlier) { return earlier->IsSameSurface(*holder); });
  if (!kept) earlier_.push_back(std::move(holder));
}

}  // namespace quillmate
