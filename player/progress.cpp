#include "progress.h"

#include <algorithm>

#include "utf8.h"

namespace quillmate::player {
namespace {

using std::chrono::milliseconds;
constexpr milliseconds kTick{250};
constexpr std::size_t kBarWidth = 20;

// The steps to come are taken to last as long as those played; nothing is known before the first one ended.
std::string TimeLeft(const Summary& so_far, milliseconds running) {
  if (so_far.played == 0) return {};
  const milliseconds each = so_far.time / so_far.played;
  const milliseconds left = each * (so_far.steps - so_far.played) - std::min(running, each);
  const auto seconds = std::chrono::ceil<std::chrono::seconds>(std::max(left, milliseconds{1})).count();
  const std::string minutes = seconds >= 60 ? std::to_string(seconds / 60) + " min " : "";
  return "  about " + minutes + std::to_string(seconds % 60) + " s left";
}

}  // namespace

std::string ProgressText(const Step& step, const Summary& so_far, milliseconds running, std::size_t columns) {
  const std::size_t filled = so_far.steps == 0 ? 0 : kBarWidth * so_far.played / so_far.steps;
  const std::string start = "[" + std::string(filled, '#') + std::string(kBarWidth - filled, '-') + "]  " +
                            std::to_string(so_far.played + 1) + " of " + std::to_string(so_far.steps) + "  ";
  const std::string end = TimeLeft(so_far, running);
  std::string what = step.command + " " + std::string(step.Subject());
  std::ranges::replace_if(
      what, [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
  const std::size_t taken = start.size() + end.size();
  return CutTo(start + CutTo(what, taken + 8 < columns ? columns - taken : 8) + end, columns);
}

Progress::Progress(TextSink& out, std::size_t columns)
    : out_(out), columns_(columns), ticker_([this](const std::stop_token& stop) { Tick(stop); }) {}

void Progress::Started(const Step& step, const Summary& so_far) {
  const std::scoped_lock lock(mutex_);
  step_ = &step;
  so_far_ = so_far;
  start_ = std::chrono::steady_clock::now();
  Draw();
}

void Progress::Finished(const Outcome&, const Summary&) {
  const std::scoped_lock lock(mutex_);
  step_ = nullptr;
  out_.Write("\r" + std::string(columns_, ' ') + "\r");
}

void Progress::Draw() {
  const auto running = std::chrono::steady_clock::now() - start_;
  const auto text = ProgressText(*step_, so_far_, std::chrono::round<milliseconds>(running), columns_);
  out_.Write("\r" + FitTo(text, columns_));
}

void Progress::Tick(const std::stop_token& stop) {
  std::unique_lock lock(mutex_);
  while (!ended_.wait_for(lock, stop, kTick, [&stop] { return stop.stop_requested(); })) {
    if (step_ != nullptr) Draw();
  }
}

}  // namespace quillmate::player
