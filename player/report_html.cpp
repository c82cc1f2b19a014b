#include "report_html.h"

#include <algorithm>
#include <array>

#include "printers.h"
#include "report_style.h"
#include "utf8.h"

namespace quillmate::player {
namespace {

constexpr std::size_t kWidestAnswer = 90;

std::string Element(std::string_view tag, std::string_view name, std::string_view text) {
  const std::string attribute = name.empty() ? "" : " class=\"" + std::string(name) + "\"";
  return "<" + std::string(tag) + attribute + ">" + EscapeHtml(text) + "</" + std::string(tag) + ">";
}

std::string PrintIndented(const cJSON* item) {
  struct TextDeleter {
    void operator()(char* text) const { cJSON_free(text); }
  };
  const std::unique_ptr<char, TextDeleter> text(cJSON_Print(item));
  return text ? text.get() : "";
}

std::string Row(std::string_view name, std::string_view text) {
  return Element("dt", "", name) + Element("dd", "", text) + "\n";
}

std::string ExpectationText(const Expectation& expect) {
  const JsonPtr object(cJSON_CreateObject());
  if (expect.success) cJSON_AddBoolToObject(object.get(), "success", *expect.success);
  if (expect.result)
    cJSON_AddItemToObject(object.get(), "result", cJSON_Duplicate(expect.result.get(), true));
  if (expect.log) cJSON_AddStringToObject(object.get(), "log", expect.log->c_str());
  return PrintCompact(object.get());
}

// The rows of an extracted table; null when the step extracted none.
JsonPtr TableOf(const Outcome& outcome) {
  if (outcome.step->command != "gettable" || !outcome.envelope) return nullptr;
  const cJSON* result = outcome.envelope->result();
  JsonPtr rows(cJSON_IsString(result) ? cJSON_Parse(result->valuestring) : nullptr);
  return cJSON_IsArray(rows.get()) ? std::move(rows) : nullptr;
}

std::string TableHtml(const Outcome& outcome) {
  const JsonPtr rows = TableOf(outcome);
  if (!rows) return {};
  std::string html = "<div class=\"wide\"><table>\n";
  for (const cJSON* row = rows->child; row != nullptr; row = row->next) {
    html += "<tr>";
    for (const cJSON* cell = row->child; cell != nullptr; cell = cell->next)
      html += Element(row == rows->child ? "th" : "td", "",
                      cJSON_IsString(cell) ? cell->valuestring : PrintCompact(cell));
    html += "</tr>\n";
  }
  return html + "</table></div>\n";
}

std::string PictureHtml(const Picture& picture) {
  if (picture.bytes.empty()) return Element("p", "problem", "No picture: " + picture.problem) + "\n";
  const std::string link = EscapeHtml(picture.link);
  return "<figure><a href=\"" + link +
         "\"><img alt=\"The browser after this step\" src=\"data:image/png;base64," +
         EncodeBase64(picture.bytes) + "\"></a><figcaption><a href=\"" + link + "\">" + link +
         "</a></figcaption></figure>\n";
}

// What a person wants to know of an answer at a glance.
std::string AnswerText(const Outcome& outcome) {
  if (!outcome.failure.empty()) return outcome.failure;
  const Envelope& envelope = *outcome.envelope;
  if (!envelope.success()) return "fails as expected: " + std::string(envelope.log());
  const cJSON* result = envelope.result();
  if (result == nullptr || cJSON_IsTrue(result)) return "ok";
  if (const JsonPtr rows = TableOf(outcome))
    return "a table of " + Count(static_cast<std::size_t>(cJSON_GetArraySize(rows.get())), "row");
  return CutTo(cJSON_IsString(result) ? result->valuestring : PrintCompact(result), kWidestAnswer);
}

std::string DetailsHtml(const Outcome& outcome) {
  const Step& step = *outcome.step;
  std::string html = "<dl>\n";
  for (const auto& [name, value] : step.parameters) html += Row(name, value);
  if (step.expect) html += Row("expected", ExpectationText(*step.expect));
  html += "</dl>\n";
  if (outcome.envelope) html += Element("pre", "", PrintIndented(outcome.envelope->json())) + "\n";
  return html;
}

std::string Anchor(const Step& step) { return "line-" + std::to_string(step.line); }

}  // namespace

std::string EscapeHtml(std::string_view text) {
  std::string html;
  html.reserve(text.size());
  for (const char c : text) {
    switch (c) {
      case '&':
        html += "&amp;";
        break;
      case '<':
        html += "&lt;";
        break;
      case '>':
        html += "&gt;";
        break;
      case '"':
        html += "&quot;";
        break;
      case '\'':
        html += "&#39;";
        break;
      default:
        html += c;
    }
  }
  return html;
}

std::string EncodeBase64(std::string_view bytes) {
  static constexpr std::string_view kDigits =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  text.reserve((bytes.size() + 2) / 3 * 4);
  for (std::size_t at = 0; at < bytes.size(); at += 3) {
    std::array<unsigned, 3> group{};
    const std::string_view part = bytes.substr(at, 3);
    std::ranges::transform(part, group.begin(), [](char c) { return static_cast<unsigned char>(c); });
    const unsigned bits = group[0] << 16 | group[1] << 8 | group[2];
    for (std::size_t digit = 0; digit < 4; ++digit)
      text += digit <= part.size() ? kDigits[bits >> (18 - 6 * digit) & 63] : '=';
  }
  return text;
}

std::string PageStart(std::string_view title) {
  return "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
         "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n" +
         Element("title", "", title) + "\n<style>\n" + std::string(kReportStyle) +
         "</style>\n</head>\n<body>\n";
}

std::string SummaryHtml(const PageSummary& summary) {
  std::string html = "<header class=\"" + std::string(summary.state) + "\">\n" +
                     Element("h1", "", summary.title) + "\n" + Element("p", "outcome", summary.sentence) +
                     "\n" + Element("p", "start", "Began " + summary.start) +
                     "\n<nav class=\"times\" aria-label=\"Time of each step\">\n";
  for (const StepTime& time : summary.times) {
    const std::string what =
        "line " + std::to_string(time.step->line) + ": " + time.step->command + ", " + TimeText(time.time);
    html += "<a href=\"#" + Anchor(*time.step) + "\"" + (time.failed ? " class=\"bad\"" : "") +
            " style=\"flex-grow:" + std::to_string(std::max<long long>(time.time.count(), 1)) +
            "\" title=\"" + EscapeHtml(what) + "\"></a>";
  }
  return html + "\n</nav>\n</header>\n";
}

std::string StepHtml(const Outcome& outcome, std::span<const Picture> pictures) {
  const Step& step = *outcome.step;
  const bool failed = !outcome.failure.empty();
  std::string html =
      "<section id=\"" + Anchor(step) + "\"" + (failed ? " class=\"bad\"" : "") + ">\n<details" +
      (failed ? " open" : "") + "><summary>" + Element("span", "line", std::to_string(step.line)) +
      Element("code", "command", step.command) +
      Element("span", "subject", CutTo(step.Subject(), kWidestAnswer)) +
      Element("span", "answer", AnswerText(outcome)) + Element("span", "time", TimeText(outcome.time)) +
      "</summary>\n" + DetailsHtml(outcome) + "</details>\n" + TableHtml(outcome);
  for (const Picture& picture : pictures) html += PictureHtml(picture);
  return html + "</section>\n";
}

std::string UnplayedHtml(std::span<const Step> steps) {
  if (steps.empty()) return {};
  std::string html = "<section class=\"unplayed\">\n<h2>Not played</h2>\n";
  for (const Step& step : steps) {
    html += "<p>" + Element("span", "line", std::to_string(step.line)) +
            Element("code", "command", step.command) +
            Element("span", "subject", CutTo(step.Subject(), kWidestAnswer)) + "</p>\n";
  }
  return html + "</section>\n";
}

}  // namespace quillmate::player
