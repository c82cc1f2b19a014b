// Takes the lines of an endless stream one by one, whatever their length.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>

namespace quillmate::player {

/// Where bytes come from.
class ByteSource {
 public:
  virtual ~ByteSource() = default;
  /// Waits for bytes. @return how many; 0 at the end.
  virtual std::size_t Read(std::span<char> buffer) = 0;
};

struct InputLine {
  std::string text;       ///< without its line break; of a line that is too long, nothing
  int number = 0;         ///< counted from 1
  bool too_long = false;  ///< it had more bytes than the limit
};

class LineInput {
 public:
  /// @param limit in bytes. Of a longer line nothing is kept, so that no input can use up the memory.
  LineInput(ByteSource& source, std::size_t limit) : source_(source), limit_(limit) {}
  /// Waits for a line. @return none at the end; a last line without a line break counts.
  std::optional<InputLine> Next();

 private:
  bool Fill();
  void Append(InputLine& line, std::string_view part) const;

  ByteSource& source_;
  std::size_t limit_;
  int number_ = 0;
  std::string buffer_;
  std::size_t used_ = 0;
};

}  // namespace quillmate::player
