#include "results.h"

#include <algorithm>

#include "json.h"

namespace quillmate::selftest {
namespace {

using player::JsonPtr;

std::string TextOf(const cJSON* object, const char* name) {
  const cJSON* member = cJSON_GetObjectItemCaseSensitive(object, name);
  return cJSON_IsString(member) ? member->valuestring : "";
}

double NumberOf(const cJSON* object, const char* name) {
  const cJSON* member = cJSON_GetObjectItemCaseSensitive(object, name);
  return cJSON_IsNumber(member) ? member->valuedouble : 0;
}

void Add(cJSON* object, const char* name, const std::string& text) {
  cJSON_AddStringToObject(object, name, text.c_str());
}

TestResult ReadResult(const cJSON* object) {
  return {TextOf(object, "area"), TextOf(object, "name"),
          static_cast<Outcome>(static_cast<int>(NumberOf(object, "outcome"))), TextOf(object, "text"),
          std::chrono::milliseconds(static_cast<long long>(NumberOf(object, "ms")))};
}

void AddResult(cJSON* object, const TestResult& result) {
  Add(object, "message", "ended");
  Add(object, "area", result.area);
  Add(object, "name", result.name);
  Add(object, "text", result.text);
  cJSON_AddNumberToObject(object, "outcome", static_cast<int>(result.outcome));
  cJSON_AddNumberToObject(object, "ms", static_cast<double>(result.time.count()));
}

}  // namespace

std::string LineOf(const Message& message) {
  const JsonPtr object(cJSON_CreateObject());
  if (message.started) {
    Add(object.get(), "message", "started");
    Add(object.get(), "name", *message.started);
  } else if (message.ended) {
    AddResult(object.get(), *message.ended);
  } else if (message.answer) {
    Add(object.get(), "message", "answer");
    Add(object.get(), "question", message.answer->question);
    Add(object.get(), "answer", message.answer->answer);
    Add(object.get(), "expected", message.answer->expected);
  }
  return player::PrintCompact(object.get());
}

std::optional<Message> ReadLine(std::string_view line) {
  const JsonPtr object(cJSON_ParseWithLength(line.data(), line.size()));
  const std::string kind = TextOf(object.get(), "message");
  Message message;
  if (kind == "started") {
    message.started = TextOf(object.get(), "name");
  } else if (kind == "ended") {
    message.ended = ReadResult(object.get());
  } else if (kind == "answer") {
    message.answer = {TextOf(object.get(), "question"), TextOf(object.get(), "answer"),
                      TextOf(object.get(), "expected")};
  } else {
    return std::nullopt;
  }
  return message;
}

void Counts::Add(Outcome outcome) {
  ++(outcome == Outcome::kPassed ? passed : outcome == Outcome::kFailed ? failed : not_tried);
}

Counts CountAll(const Run& run) {
  Counts counts;
  for (const TestResult& test : run.tests) counts.Add(test.outcome);
  return counts;
}

std::vector<Area> AreasOf(const Run& run) {
  std::vector<Area> areas;
  for (const TestResult& test : run.tests) {
    auto area = std::ranges::find(areas, test.area, &Area::name);
    if (area == areas.end()) area = areas.insert(areas.end(), {test.area, {}});
    area->counts.Add(test.outcome);
  }
  return areas;
}

std::vector<Reason> ReasonsOf(const Run& run) {
  std::vector<Reason> reasons;
  for (const TestResult& test : run.tests) {
    if (test.outcome != Outcome::kNotTried) continue;
    auto reason = std::ranges::find(reasons, test.text, &Reason::text);
    if (reason == reasons.end()) reason = reasons.insert(reasons.end(), {test.text, {}});
    reason->tests.push_back(test.FullName());
  }
  std::ranges::stable_sort(reasons, std::greater(), [](const Reason& reason) { return reason.tests.size(); });
  return reasons;
}

std::string Sentence(const Counts& counts) {
  const int all = counts.passed + counts.failed + counts.not_tried;
  const std::string tests = std::to_string(all) + (all == 1 ? " test" : " tests");
  const std::string failed = counts.failed == 0
                                 ? std::to_string(counts.passed) + " of " + tests + " passed, none failed"
                                 : std::to_string(counts.failed) + " of " + tests + " failed";
  return failed +
         (counts.not_tried == 0 ? "" : ", " + std::to_string(counts.not_tried) + " could not be tried");
}

std::string TimeOf(std::chrono::milliseconds time) {
  const auto tenths = (time.count() + 50) / 100;
  if (tenths >= 1200) return std::to_string(tenths / 600) + " min " + std::to_string(tenths / 10 % 60) + " s";
  return std::to_string(tenths / 10) + "." + std::to_string(tenths % 10) + " s";
}

}  // namespace quillmate::selftest
