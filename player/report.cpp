#include "report.h"

#include <array>
#include <ctime>
#include <iterator>

#include "printers.h"

namespace quillmate::player {
namespace {

using std::chrono::milliseconds;

constexpr std::size_t kLongestSentence = 200;

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

// The longest that the summary can become: every step failed, and each took a day.
std::size_t LargestSummary(PageSummary summary, std::span<const Step> steps) {
  for (const Step& step : steps) summary.times.push_back({&step, std::chrono::hours(24), true});
  return SummaryHtml(summary).size() + kLongestSentence;
}

// Where a capturing step of the script itself has put its picture.
std::filesystem::path SavedPicture(const Outcome& outcome) {
  const Step& step = *outcome.step;
  const bool captures = step.command == "takescreenshot" || step.command == "takeelementshot";
  if (!captures || !outcome.envelope || !outcome.envelope->success()) return {};
  const std::filesystem::path name = PathFromUtf8(step.Parameter("file-name"));
  return name.extension() == ".png" ? PathFromUtf8(step.Parameter("save-path")) / name
                                    : std::filesystem::path();
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
  summary_size_ = LargestSummary(summary_, steps_);
  const std::string start = PageStart(summary_.title);
  summary_start_ = static_cast<std::streamoff>(start.size());
  file_ << start << std::string(summary_size_, ' ') << "<main>\n";
  WriteSummary("running", "No step has ended yet.");
}

void Report::Started(const Step& step, const Summary& so_far) {
  WriteSummary("running", "Unfinished: step " + std::to_string(so_far.played + 1) + " of " +
                              std::to_string(so_far.steps) + ", in line " + std::to_string(step.line) +
                              ", has not ended.");
}

void Report::Finished(const Outcome& outcome, const Summary& so_far) {
  file_ << StepHtml(outcome, PicturesOf(outcome));
  summary_.times.push_back({outcome.step, outcome.time, !outcome.failure.empty()});
  WriteSummary("running", "Unfinished: " + std::to_string(so_far.played) + " of " +
                              std::to_string(so_far.steps) + " steps have ended.");
}

void Report::Ended(const Summary& summary) {
  file_ << UnplayedHtml(steps_.subspan(summary.played)) << "</main>\n</body>\n</html>\n";
  WriteSummary(summary.Passed() ? "passed" : "failed", SummaryText(summary));
}

void Report::WriteSummary(std::string_view state, std::string sentence) {
  summary_.state = state;
  summary_.sentence = std::move(sentence);
  std::string html = SummaryHtml(summary_);
  html.resize(summary_size_, ' ');
  file_.seekp(summary_start_);
  file_ << html;
  file_.seekp(0, std::ios::end);
  file_.flush();
}

std::vector<Picture> Report::PicturesOf(const Outcome& outcome) const {
  std::vector<Picture> pictures;
  if (const auto path = SavedPicture(outcome); !path.empty()) pictures.push_back(ReadPicture(path, {}));
  if (outcome.step->shot || !outcome.failure.empty()) {
    const std::string name = "line-" + std::to_string(outcome.step->line) + ".png";
    pictures.push_back(ReadPicture(folder_ / name, take_picture_(name)));
  }
  return pictures;
}

Picture Report::ReadPicture(const std::filesystem::path& path, std::string problem) const {
  Picture picture;
  picture.problem = std::move(problem);
  if (!picture.problem.empty()) return picture;
  picture.bytes = ReadBytes(path);
  if (picture.bytes.empty()) picture.problem = "its file cannot be read";
  const std::u8string link = (path.parent_path() == folder_ ? path.filename() : path).generic_u8string();
  picture.link.assign(link.begin(), link.end());
  if (path.parent_path() != folder_) picture.link.insert(0, "file:///");
  return picture;
}

}  // namespace quillmate::player
