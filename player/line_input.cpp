#include "line_input.h"

#include <string_view>

namespace quillmate::player {
namespace {

constexpr std::size_t kBlock = 65536;  // bytes

}  // namespace

std::optional<InputLine> LineInput::Next() {
  if (used_ == buffer_.size() && !Fill()) return std::nullopt;
  InputLine line{{}, ++number_, false};
  do {
    const std::string_view rest = std::string_view(buffer_).substr(used_);
    const std::size_t end = rest.find('\n');
    Append(line, rest.substr(0, end));
    used_ += end == std::string_view::npos ? rest.size() : end + 1;
    if (end != std::string_view::npos) break;
  } while (Fill());
  if (line.text.ends_with('\r')) line.text.pop_back();
  return line;
}

bool LineInput::Fill() {
  buffer_.resize(kBlock);
  buffer_.resize(source_.Read(buffer_));
  used_ = 0;
  return !buffer_.empty();
}

void LineInput::Append(InputLine& line, std::string_view part) const {
  line.too_long |= line.text.size() + part.size() > limit_;
  if (line.too_long) {
    line.text.clear();
    line.text.shrink_to_fit();
  } else {
    line.text += part;
  }
}

}  // namespace quillmate::player
