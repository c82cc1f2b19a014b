#include "json.h"

namespace quillmate::player {
namespace {

// Walks valid JSON text, so it only has to tell strings from the rest.
class Walker {
 public:
  explicit Walker(std::string_view text) : text_(text) {}

  std::vector<MemberOffsets> Members() {
    std::vector<MemberOffsets> members;
    at_ = text_.find('{');
    if (at_ == std::string_view::npos) return members;
    ++at_;
    while (BeginsMember()) {
      const std::size_t name = at_;
      SkipString();
      at_ = text_.find(':', at_) + 1;
      SkipBlanks();
      members.push_back({name, at_});
      SkipValue();
    }
    return members;
  }

 private:
  // Goes on to the next member's name or to the end of the object.
  bool BeginsMember() {
    at_ = text_.find_first_of("\"}", at_);
    return at_ != std::string_view::npos && text_[at_] == '"';
  }

  void SkipBlanks() {
    while (at_ < text_.size() && std::string_view(" \t\r\n").contains(text_[at_])) ++at_;
  }

  void SkipString() {
    for (++at_; at_ < text_.size() && text_[at_] != '"'; ++at_) {
      if (text_[at_] == '\\') ++at_;
    }
    ++at_;
  }

  void SkipValue() {
    for (int depth = 0; at_ < text_.size();) {
      const char next = text_[at_];
      if (next == '"') {
        SkipString();
        continue;
      }
      if (depth == 0 && (next == ',' || next == '}')) return;
      if (next == '{' || next == '[') ++depth;
      if (next == '}' || next == ']') --depth;
      ++at_;
    }
  }

  std::string_view text_;
  std::size_t at_ = 0;
};

}  // namespace

std::string PrintCompact(const cJSON* item) {
  const com::JsonText text(cJSON_PrintUnformatted(item));
  return text ? text.get() : "";
}

std::vector<MemberOffsets> FindMembers(std::string_view text) { return Walker(text).Members(); }

std::size_t FindEscapedZero(std::string_view text) {
  for (std::size_t at = 0; at + 1 < text.size(); ++at) {
    if (text[at] != '\\') continue;
    if (text.substr(at, 6) == "\\u0000") return at;
    ++at;  // the escaped character, which may be a backslash itself
  }
  return std::string_view::npos;
}

}  // namespace quillmate::player
