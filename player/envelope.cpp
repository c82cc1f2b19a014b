#include "envelope.h"

#include <algorithm>
#include <array>

#include "utf8.h"

namespace quillmate::player {
namespace {

bool AnswersInUtf8(std::string_view command) {
  static constexpr std::array<std::string_view, 2> kCommands = {"gettable", "currenturl"};
  return std::ranges::find(kCommands, command) != kCommands.end();
}

void DecodeTexts(cJSON* item, bool utf8, const AnsiDecoder& decode) {
  if (cJSON_IsString(item)) {
    const std::string_view bytes = item->valuestring;
    if (!utf8 || FindInvalidUtf8(bytes) != std::string_view::npos)
      cJSON_SetValuestring(item, decode(bytes).c_str());
  }
  for (cJSON* child = item->child; child != nullptr; child = child->next) DecodeTexts(child, utf8, decode);
}

std::string Difference(std::string_view member, const std::string& expected, const std::string& actual) {
  return "expected " + std::string(member) + " " + expected + ", got " + actual;
}

// A table or a whole page would bury the message; the report shows them whole.
std::string Cut(std::string_view json) {
  constexpr std::size_t kLongest = 200;  // columns
  return CutTo(json, kLongest);
}

std::string Quoted(std::string_view text) {
  const JsonPtr string(cJSON_CreateString(std::string(text).c_str()));
  return PrintCompact(string.get());
}

}  // namespace

std::optional<Envelope> Envelope::Read(std::string_view command, std::string_view bytes,
                                       const AnsiDecoder& decode) {
  JsonPtr object(cJSON_ParseWithLength(bytes.data(), bytes.size()));
  if (!cJSON_IsObject(object.get())) return std::nullopt;
  for (cJSON* member = object->child; member != nullptr; member = member->next) {
    const bool utf8 = std::string_view(member->string) == "result" && AnswersInUtf8(command);
    DecodeTexts(member, utf8, decode);
  }
  Envelope envelope(std::move(object));
  if (!cJSON_IsBool(envelope.Member("success"))) return std::nullopt;
  return envelope;
}

std::string_view Envelope::log() const {
  const cJSON* log = Member("log");
  return cJSON_IsString(log) ? log->valuestring : std::string_view();
}

bool Envelope::Matches(const cJSON* expected) const {
  const cJSON* actual = result();
  if (cJSON_Compare(actual, expected, true)) return true;
  const bool structured = cJSON_IsArray(expected) || cJSON_IsObject(expected);
  if (!structured || !cJSON_IsString(actual)) return false;
  const JsonPtr parsed(cJSON_Parse(actual->valuestring));
  return cJSON_Compare(parsed.get(), expected, true) != 0;
}

std::string Envelope::Mismatch(const std::optional<Expectation>& expect) const {
  if (!expect) return success() ? "" : log().empty() ? "did not succeed" : std::string(log());
  // The message of a command that failed says most.
  const std::string why = log().empty() ? "" : " (" + std::string(log()) + ")";
  if (expect->success && *expect->success != success())
    return Difference("success", *expect->success ? "true" : "false", (success() ? "true" : "false") + why);
  if (expect->result && !Matches(expect->result.get())) {
    return Difference("result", Cut(PrintCompact(expect->result.get())),
                      (result() ? Cut(PrintCompact(result())) : "none") + why);
  }
  if (expect->log && *expect->log != log()) return Difference("log", Quoted(*expect->log), Quoted(log()));
  return {};
}

}  // namespace quillmate::player
