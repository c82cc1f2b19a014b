#include "engine/json.h"

#include <cctype>

namespace testbrowser::engine {
namespace {

constexpr std::size_t kEscapeLength = 6;  // \uXXXX

/// The code unit of the escape `\uXXXX` at `at`, or -1.
int EscapedUnit(const std::string& text, std::size_t at) {
  if (at + kEscapeLength > text.size() || text[at] != '\\' || text[at + 1] != 'u') return -1;
  int unit = 0;
  for (std::size_t i = at + 2; i < at + kEscapeLength; ++i) {
    const auto digit = static_cast<unsigned char>(text[i]);
    if (std::isxdigit(digit) == 0) return -1;
    unit = unit * 16 + (std::isdigit(digit) != 0 ? digit - '0' : std::tolower(digit) - 'a' + 10);
  }
  return unit;
}

bool IsHigh(int unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool IsLow(int unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

void RepairLoneSurrogates(std::string& text) {
  for (auto at = text.find('\\'); at != std::string::npos; at = text.find('\\', at)) {
    const int unit = EscapedUnit(text, at);
    if (unit < 0) {
      at += 2;  // another escape, perhaps of a backslash
    } else if (IsHigh(unit) && IsLow(EscapedUnit(text, at + kEscapeLength))) {
      at += 2 * kEscapeLength;
    } else {
      // cJSON ends a text at \u0000 as well.
      if (IsHigh(unit) || IsLow(unit) || unit == 0) text.replace(at, kEscapeLength, "\\ufffd");
      at += kEscapeLength;
    }
  }
}

}  // namespace

JsonPtr ParseJson(std::string text) {
  RepairLoneSurrogates(text);
  return JsonPtr(cJSON_ParseWithLength(text.data(), text.size()));
}

std::string PrintJson(const cJSON* value) {
  const std::unique_ptr<char, decltype(&cJSON_free)> printed(cJSON_PrintUnformatted(value), cJSON_free);
  return printed != nullptr ? printed.get() : "";
}

JsonPtr JsonText(std::string_view text) { return JsonPtr(cJSON_CreateString(std::string(text).c_str())); }
JsonPtr JsonNumber(double number) { return JsonPtr(cJSON_CreateNumber(number)); }
JsonPtr JsonBool(bool value) { return JsonPtr(cJSON_CreateBool(value)); }
JsonPtr JsonNull() { return JsonPtr(cJSON_CreateNull()); }

JsonObject& JsonObject::Add(const char* name, JsonPtr value) {
  cJSON_AddItemToObject(object_.get(), name, value.release());
  return *this;
}

const cJSON* Member(const cJSON* object, const char* name) {
  return cJSON_GetObjectItemCaseSensitive(object, name);
}

std::string MemberText(const cJSON* object, const char* name) {
  const char* text = cJSON_GetStringValue(Member(object, name));
  return text != nullptr ? text : "";
}

double MemberNumber(const cJSON* object, const char* name, double fallback) {
  const cJSON* member = Member(object, name);
  return cJSON_IsNumber(member) != 0 ? member->valuedouble : fallback;
}

bool MemberBool(const cJSON* object, const char* name) { return cJSON_IsTrue(Member(object, name)) != 0; }

}  // namespace testbrowser::engine
