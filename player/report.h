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
/// @return what went wrong; empty when the file shows the browser. When the browser is lost, the file may
///   show the whole screen.
using PictureTaker = std::function<std::string(const std::string& file_name)>;

/// Writes `report.html` into a folder while the run goes on. The page stands on its own, pictures included,
/// and is complete up to the last step that ended, whatever becomes of the process: a step is appended when
/// it has ended, its pictures after it, and the summary on top, whose place is kept from the start, is
/// written over. What a step costs does not grow with the script: the bar of times has a fixed number of
/// parts, and from a certain size on pictures stay in their files.
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
  void WriteBarPart(const Outcome& outcome, std::size_t index);
  void WritePictures(const Outcome& outcome);
  void WriteAt(std::streamoff place, std::string text, std::size_t size);
  Picture ReadPicture(const std::filesystem::path& path, std::string problem);

  std::filesystem::path folder_;
  std::span<const Step> steps_;
  PictureTaker take_picture_;
  PageSummary summary_;
  std::streamoff summary_start_ = 0;
  std::size_t summary_size_ = 0;
  BarPart bar_part_;
  std::size_t kept_bytes_ = 0;  ///< of pictures in the page
  std::ofstream file_;
};

std::filesystem::path PathFromUtf8(std::string_view text);

}  // namespace quillmate::player
