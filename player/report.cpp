#include "report.h"

#include <algorithm>
#include <array>
#include <ctime>
#include <iterator>

#include "printers.h"

namespace quillmate::player {
namespace {

using std::chrono::milliseconds;

constexpr std::size_t kLongestSummary = 600;  // bytes, beside its title
constexpr std::size_t kBarParts = 100;        // as many as a phone is wide enough for
constexpr std::size_t kMostKeptBytes = 4'000'000;

std::string Now() {
  const std::time_t now = std::time(nullptr);
  std::array<char, 32> text{};
  std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S", std::localtime(&now));
  return text.data();
}

std::string ReadBytes(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(file), {});
}

// The file that a capturing step of the script itself has saved.
std::filesystem::path SavedPicture(const Outcome& outcome) {
  const Step& step = *outcome.step;
  const bool captures = step.command == "takescreenshot" || step.command == "takeelementshot";
  if (!captures || !outcome.envelope || !outcome.envelope->success()) return {};
  const std::filesystem::path folder = PathFromUtf8(step.Parameter("save-path"));
  return std::filesystem::absolute(folder / PathFromUtf8(step.Parameter("file-name"))).lexically_normal();
}

// The kinds of picture that browsers show.
std::string TypeOf(const std::filesystem::path& path) {
  const std::filesystem::path extension = path.extension();
  return extension == ".png" ? "png" : extension == ".bmp" ? "bmp" : "";
}

std::string Utf8FromPath(const std::filesystem::path& path) {
  const std::u8string text = path.generic_u8string();
  return std::string(text.begin(), text.end());
}

}  // namespace

std::filesystem::path PathFromUtf8(std::string_view text) { return std::u8string(text.begin(), text.end()); }

Report::Report(std::filesystem::path folder, std::string title, std::span<const Step> steps,
               PictureTaker take_picture)
    : folder_(std::move(folder)),
      steps_(steps),
      take_picture_(std::move(take_picture)),
      file_(Path(), std::ios::binary | std::ios::trunc) {
  summary_.title = std::move(title);
  summary_.start = Now();
  summary_size_ = SummaryHtml(summary_).size() + kLongestSummary;
  const std::string start = PageStart(summary_.title);
  summary_start_ = static_cast<std::streamoff>(start.size());
  file_ << start << std::string(summary_size_, ' ') << kBarStart
        << std::string(std::min(kBarParts, steps_.size()) * kLongestBarPart, ' ') << kBarEnd << "<main>\n";
  WriteSummary("running", "No step has ended yet.");
}

void Report::Started(const Step& step, const Summary& so_far) {
  WriteSummary("running", "Unfinished: line " + std::to_string(step.line) + ", step " +
                              std::to_string(so_far.played + 1) + " of " + std::to_string(so_far.steps) +
                              ", has not ended.");
}

void Report::Finished(const Outcome& outcome, const Summary& so_far) {
  const int line = outcome.step->line;
  const bool first = so_far.first_failure == line;
  file_ << StepHtml(outcome, first);
  if (first) summary_.first_failure = line;
  WriteBarPart(outcome, so_far.played - 1);
  WriteSummary("running", "Unfinished: " + std::to_string(so_far.played) + " of " +
                              std::to_string(so_far.steps) + " steps have ended.");
  WritePictures(outcome);
}

void Report::Ended(const Summary& summary) {
  file_ << UnplayedHtml(steps_.subspan(summary.played)) << "</main>\n</body>\n</html>\n";
  WriteSummary(summary.Passed() ? "passed" : "failed", SummaryText(summary));
}

void Report::WriteSummary(std::string_view state, std::string sentence) {
  summary_.state = state;
  summary_.sentence = std::move(sentence);
  WriteAt(summary_start_, SummaryHtml(summary_), summary_size_);
  file_.flush();
}

void Report::WriteBarPart(const Outcome& outcome, std::size_t index) {
  const std::size_t steps_a_part = (steps_.size() + kBarParts - 1) / kBarParts;
  const bool failed = !outcome.failure.empty();
  const int line = outcome.step->line;
  if (index % steps_a_part == 0) bar_part_ = {line, line, line, outcome.step->command, {}, false};
  if (failed && !bar_part_.failed) bar_part_.link_line = line;
  bar_part_.last_line = line;
  bar_part_.time += outcome.time;
  bar_part_.failed |= failed;
  const std::size_t place = summary_size_ + kBarStart.size() + index / steps_a_part * kLongestBarPart;
  WriteAt(summary_start_ + static_cast<std::streamoff>(place), BarPartHtml(bar_part_), kLongestBarPart);
}

void Report::WriteAt(std::streamoff place, std::string text, std::size_t size) {
  text.resize(size, ' ');
  file_.seekp(place);
  file_ << text;
  file_.seekp(0, std::ios::end);
}

// Taking a picture calls the library again, which may end the process: the step is in the file before.
void Report::WritePictures(const Outcome& outcome) {
  std::string html;
  if (const auto path = SavedPicture(outcome); !path.empty()) html += PictureHtml(ReadPicture(path, {}));
  if (outcome.step->shot || !outcome.failure.empty()) {
    const std::string name = "line-" + std::to_string(outcome.step->line) + ".png";
    std::string problem = take_picture_(name);
    if (!problem.empty()) problem = "No picture of the browser: " + problem;
    html += PictureHtml(ReadPicture(folder_ / name, std::move(problem)));
  }
  if (html.empty()) return;
  file_.seekp(-static_cast<std::streamoff>(kStepEnd.size()), std::ios::end);
  file_ << html << kStepEnd;
  file_.flush();
}

Picture Report::ReadPicture(const std::filesystem::path& path, std::string problem) {
  Picture picture;
  picture.problem = std::move(problem);
  std::string bytes = ReadBytes(path);
  if (bytes.empty()) {
    if (picture.problem.empty()) picture.problem = "No picture: its file cannot be read";
    return picture;
  }
  picture.name = Utf8FromPath(path.parent_path() == folder_ ? path.filename() : path);
  picture.link = LinkTo(picture.name);
  picture.type = TypeOf(path);
  if (kept_bytes_ + bytes.size() > kMostKeptBytes || picture.type.empty()) return picture;
  kept_bytes_ += bytes.size();
  picture.bytes = std::move(bytes);
  return picture;
}

}  // namespace quillmate::player
