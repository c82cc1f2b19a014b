#include "json_line.h"

#include "command_table.h"
#include "utf8.h"

namespace quillmate::player {
namespace {

std::unexpected<LineError> Wrong(std::size_t offset, std::string message) {
  return std::unexpected(LineError{offset, std::move(message)});
}

std::string TwiceText(std::string_view earlier, std::string_view name) {
  const std::string quoted = "\"" + std::string(name) + "\"";
  if (earlier == name) return quoted + " is given twice";
  return quoted + " and \"" + std::string(earlier) + "\" are one name: the library ignores case";
}

}  // namespace

std::expected<void, LineError> CheckNames(const cJSON* object, const std::vector<MemberOffsets>& offsets) {
  std::size_t index = 0;
  for (const cJSON* member = object->child; member != nullptr; member = member->next, ++index) {
    for (const cJSON* earlier = object->child; earlier != member; earlier = earlier->next) {
      if (SameIgnoringCase(earlier->string, member->string))
        return Wrong(offsets[index].name, TwiceText(earlier->string, member->string));
    }
  }
  return {};
}

std::expected<LineObject, LineError> ReadLineObject(std::string_view text, std::string_view what) {
  if (const std::size_t bad = FindInvalidUtf8(text); bad != std::string_view::npos)
    return Wrong(bad, "not valid UTF-8");
  if (const std::size_t zero = text.find('\0'); zero != std::string_view::npos)
    return Wrong(zero, "a zero byte in the text");
  const std::string terminated(text);
  const char* end = nullptr;
  LineObject line;
  line.object.reset(cJSON_ParseWithLengthOpts(terminated.c_str(), terminated.size() + 1, &end, true));
  if (!line.object) return Wrong(static_cast<std::size_t>(end - terminated.c_str()), "not valid JSON");
  if (!cJSON_IsObject(line.object.get()))
    return Wrong(text.find_first_not_of(" \t"), std::string(what) + " is a JSON object");
  if (const std::size_t zero = FindEscapedZero(text); zero != std::string_view::npos)
    return Wrong(zero, "a text cannot hold the character \\u0000");
  line.offsets = FindMembers(text);
  if (auto checked = CheckNames(line.object.get(), line.offsets); !checked)
    return std::unexpected(std::move(checked.error()));
  return line;
}

}  // namespace quillmate::player
