#include "call_thread.h"

#include <algorithm>

namespace quillmate::player {
namespace {

constexpr std::chrono::milliseconds kLook{100};  // how often a deadline is asked for

}  // namespace

CallThread::CallThread(CommandHost& host, std::function<void(const Call&)> before_call)
    : host_(host),
      before_call_(std::move(before_call)),
      thread_([this](const std::stop_token& stop) { Work(stop); }) {}

CallResult CallThread::Make(Call call, const Deadline& deadline) {
  std::unique_lock lock(mutex_);
  if (job_ && !WaitUntilDone(lock, *job_, deadline))
    return {CallResult::State::kNotBegun, std::nullopt, {}, job_->call.command};
  const auto job = std::make_shared<Job>(std::move(call), CallResult{}, false);
  job_ = job;
  has_work_ = true;
  changed_.notify_all();
  if (!WaitUntilDone(lock, *job, deadline)) return {CallResult::State::kRunning, std::nullopt, {}, {}};
  return std::move(job->result);
}

bool CallThread::Busy() {
  const std::scoped_lock lock(mutex_);
  return job_ && !job_->done;
}

bool CallThread::WaitUntilDone(std::unique_lock<std::mutex>& lock, const Job& job, const Deadline& deadline) {
  while (!job.done) {
    const TimePoint end = deadline();
    const TimePoint now = std::chrono::steady_clock::now();
    if (now >= end) return false;
    changed_.wait_until(lock, std::min(end, now + kLook), [&job] { return job.done; });
  }
  return true;
}

void CallThread::Work(const std::stop_token& stop) {
  std::unique_lock lock(mutex_);
  while (changed_.wait(lock, stop, [this] { return has_work_; })) {
    has_work_ = false;
    const std::shared_ptr<Job> job = job_;
    lock.unlock();
    before_call_(job->call);
    job->result.answer = host_.Call(job->call.command, job->call.parameters);
    job->result.notes = host_.TakeNotes();
    lock.lock();
    job->done = true;
    changed_.notify_all();
  }
}

}  // namespace quillmate::player
