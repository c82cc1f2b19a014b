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
  const com::JsonText text(cJSON_Print(item));
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

// The first item holds the numbers of the columns.
std::size_t RowsOf(const cJSON* rows) {
  const int items = cJSON_GetArraySize(rows);
  return static_cast<std::size_t>(items > 0 ? items - 1 : 0);
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

// What a person wants to know of an answer at a glance.
std::string AnswerText(const Outcome& outcome) {
  if (!outcome.failure.empty()) return outcome.failure;
  const Envelope& envelope = *outcome.envelope;
  if (!envelope.success()) return "fails as expected: " + std::string(envelope.log());
  const cJSON* result = envelope.result();
  if (result == nullptr || cJSON_IsTrue(result)) return "ok";
  if (const JsonPtr rows = TableOf(outcome)) return "a table of " + Count(RowsOf(rows.get()), "row");
  const std::string text = cJSON_IsString(result) ? result->valuestring : PrintCompact(result);
  return text.empty() ? "ok" : CutTo(text, kWidestAnswer);
}

std::string DetailsHtml(const Outcome& outcome) {
  const Step& step = *outcome.step;
  std::string html = "<dl>\n";
  for (const auto& [name, value, column] : step.parameters) html += Row(name, value);
  if (step.expect) html += Row("expected", ExpectationText(*step.expect));
  for (const std::string& note : outcome.notes) html += Row("the library noted", note);
  html += "</dl>\n";
  if (outcome.envelope) html += Element("pre", "", PrintIndented(outcome.envelope->json())) + "\n";
  return html;
}

std::string Anchor(int line) { return "line-" + std::to_string(line); }

std::string LineText(int line) { return "line " + std::to_string(line); }

bool StandsForItself(char c) {
  return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
         std::string_view("-._~/").contains(c);
}

// A drive's name, "C:", is the one place for a colon.
bool BeginsWithDrive(std::string_view path) { return path.size() > 2 && path[1] == ':' && path[2] == '/'; }

std::string Encode(std::string_view path) {
  static constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string text;
  for (const char c : path) {
    const auto byte = static_cast<unsigned char>(c);
    if (StandsForItself(c)) {
      text += c;
    } else {
      text += {'%', kDigits[byte >> 4], kDigits[byte & 15]};
    }
  }
  return text;
}

std::string ImageSource(const Picture& picture) {
  if (picture.bytes.empty()) return picture.link;
  return "data:image/" + picture.type + ";base64," + EncodeBase64(picture.bytes);
}

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

std::string LinkTo(std::string_view path) {
  if (path.starts_with("//")) return "file:" + Encode(path);
  if (path.starts_with("/")) return "file://" + Encode(path);
  if (BeginsWithDrive(path)) return "file:///" + std::string(path.substr(0, 2)) + Encode(path.substr(2));
  return Encode(path);
}

std::string SummaryHtml(const PageSummary& summary) {
  std::string html = "<header class=\"" + std::string(summary.state) + "\">\n" +
                     Element("h1", "", summary.title) + "\n" + Element("p", "outcome", summary.sentence) +
                     "\n" + Element("p", "start", "Began " + summary.start) + "\n";
  if (summary.first_failure != 0) {
    html += "<p class=\"first\"><a href=\"#" + Anchor(summary.first_failure) +
            "\">The first failure: " + LineText(summary.first_failure) + "</a></p>\n";
  }
  return html;
}

std::string BarPartHtml(const BarPart& part) {
  constexpr std::size_t kWidestCommand = 40;
  const std::string what = part.first_line == part.last_line ? ": " + CutTo(part.command, kWidestCommand)
                                                             : " to " + std::to_string(part.last_line);
  return "<a href=\"#" + Anchor(part.link_line) + "\"" + (part.failed ? " class=\"bad\"" : "") +
         " style=\"flex-grow:" + std::to_string(std::max<long long>(part.time.count(), 1)) + "\" title=\"" +
         EscapeHtml(LineText(part.first_line) + what + ", " + TimeText(part.time)) + "\"></a>\n";
}

std::string StepHtml(const Outcome& outcome, bool first) {
  const Step& step = *outcome.step;
  const bool failed = !outcome.failure.empty();
  return "<section id=\"" + Anchor(step.line) + "\"" + (failed ? " class=\"bad\"" : "") + ">\n" +
         (failed && first ? Element("p", "first", "The first failure") + "\n" : "") + "<details" +
         (failed ? " open" : "") + "><summary>" + Element("span", "line", LineText(step.line)) +
         Element("code", "command", step.command) +
         Element("span", "subject", CutTo(step.Subject(), kWidestAnswer)) +
         Element("span", "answer", AnswerText(outcome)) + Element("span", "time", TimeText(outcome.time)) +
         "</summary>\n" + DetailsHtml(outcome) + "</details>\n" + TableHtml(outcome) + std::string(kStepEnd);
}

std::string PictureHtml(const Picture& picture) {
  const std::string problem = picture.problem.empty() ? "" : Element("p", "problem", picture.problem) + "\n";
  if (picture.link.empty()) return problem;
  const std::string link = EscapeHtml(picture.link);
  const std::string image = picture.type.empty()
                                ? ""
                                : "<img alt=\"The browser after this step\" loading=\"lazy\" src=\"" +
                                      EscapeHtml(ImageSource(picture)) + "\">";
  return problem + "<figure><a href=\"" + link + "\">" + image + "</a><figcaption><a href=\"" + link + "\">" +
         EscapeHtml(picture.name) + "</a></figcaption></figure>\n";
}

std::string UnplayedHtml(std::span<const Step> steps) {
  if (steps.empty()) return {};
  std::string html = "<section class=\"unplayed\">\n<h2>Not played</h2>\n";
  for (const Step& step : steps) {
    html += "<p>" + Element("span", "line", LineText(step.line)) + Element("code", "command", step.command) +
            Element("span", "subject", CutTo(step.Subject(), kWidestAnswer)) + "</p>\n";
  }
  return html + "</section>\n";
}

}  // namespace quillmate::player
