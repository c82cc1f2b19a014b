// The page about a run: outcome, times, every step with its answer and its picture.
#pragma once

#include <filesystem>
#include <fstream>
#include <functional>
#include <span>
#include <string>

#include "report_html.h"

namespace quillmate::player {

/// Takes a picture of the browser into the report's folder.
/// @return what went wrong; empty when the file stands there.
using PictureTaker = std::function<std::string(const std::string& file_name)>;

/// Writes `report.html` into a folder while the run goes on. The page stands on its own, pictures included,
/// and is complete up to the last step that ended, whatever becomes of the process: a step is appended when
/// it has ended, and the summary on top, whose place is kept from the start, is written over.
class Report : public Observer {
 public:
  /// @param folder exists.
  /// @param steps the whole script.
  Report(std::filesystem::path folder, std::string title, std::span<const Step> steps,
         PictureTaker take_picture);

  /// @return whether everything could be written so far.
  bool Good() const { return file_.good(); }
  std::filesystem::path Path() const { return folder_ / "report.html"; }

  void Started(const Step& step, const Summary& so_far) override;
  void Finished(const Outcome& outcome, const Summary& so_far) override;
  void Ended(const Summary& summary) override;

 private:
  void WriteSummary(std::string_view state, std::string sentence);
  std::vector<Picture> PicturesOf(const Outcome& outcome) const;
  Picture ReadPicture(const std::filesystem::path& path, std::string problem) const;

  std::filesystem::path folder_;
  std::span<const Step> steps_;
  PictureTaker take_picture_;
  PageSummary summary_;
  std::streamoff summary_start_ = 0;
  std::size_t summary_size_ = 0;
  std::ofstream file_;
};

std::filesystem::path PathFromUtf8(std::string_view text);

}  // namespace quillmate::player
