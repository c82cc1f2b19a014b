// What a reader needs first comes first: the outcome, what failed, what the browser answered otherwise, what
// nobody knew. Every test comes last.
#include "page.h"

#include <algorithm>
#include <cctype>

#include "page_style.h"
#include "report_html.h"

namespace quillmate::selftest {
namespace {

using player::EscapeHtml;

std::string Element(std::string_view tag, std::string_view attributes, std::string_view inner) {
  std::string html = "<" + std::string(tag) + (attributes.empty() ? "" : " ") + std::string(attributes) + ">";
  return html + std::string(inner) + "</" + std::string(tag) + ">";
}

std::string Cell(std::string_view text) { return Element("td", "", EscapeHtml(text)); }
std::string RowStart(bool bad) { return bad ? "<tr class=\"bad\">" : "<tr>"; }
std::string Number(int number) {
  return Element("td", number == 0 ? "class=\"number none\"" : "class=\"number\"", std::to_string(number));
}

std::string Table(std::initializer_list<std::string_view> heads, std::string_view rows) {
  std::string head;
  for (const std::string_view text : heads) head += Element("th", "", text);
  return "<div class=\"wide\"><table>\n<thead><tr>" + head + "</tr></thead>\n<tbody>\n" + std::string(rows) +
         "</tbody>\n</table></div>\n";
}

std::string Section(std::string_view id, std::string_view title, std::string_view note,
                    std::string_view inner) {
  if (inner.empty()) return {};
  return "<section id=\"" + std::string(id) + "\">\n" + Element("h2", "", title) + "\n" +
         (note.empty() ? "" : Element("p", "class=\"note\"", note) + "\n") + std::string(inner) +
         "</section>\n";
}

/// "ABoxIsAnswered" as words: "A box is answered".
std::string Words(std::string_view name) {
  std::string words;
  for (const char c : name) {
    const bool upper = std::isupper(static_cast<unsigned char>(c)) != 0;
    if (upper && !words.empty()) words += ' ';
    words += upper && !words.empty() ? static_cast<char>(std::tolower(static_cast<unsigned char>(c))) : c;
  }
  return words;
}

std::string Header(const Run& run) {
  const Counts counts = CountAll(run);
  std::string html = std::string("<header class=\"") + (counts.failed == 0 ? "passed" : "failed") +
                     "\">\n<h1>Quillmate self-test</h1>\n";
  html += Element("p", "class=\"outcome\"", Sentence(counts)) + "\n" +
          Element("p", "class=\"start\"", "Began " + EscapeHtml(run.start) + ", took " + TimeOf(run.time)) +
          "\n<dl>\n";
  for (const Line& line : run.machine)
    html += Element("dt", "", EscapeHtml(line.name)) + Element("dd", "", EscapeHtml(line.value)) + "\n";
  return html + "</dl>\n</header>\n";
}

std::string Areas(const Run& run) {
  std::string rows;
  for (const Area& area : AreasOf(run)) {
    const bool failed = area.counts.failed != 0;
    rows += RowStart(failed) + Cell(area.name) + Number(area.counts.passed) + Number(area.counts.failed) +
            Number(area.counts.not_tried) + "</tr>\n";
  }
  return Table({"Area", "passed", "failed", "not tried"}, rows);
}

std::string Failures(const Run& run) {
  std::string html;
  for (const TestResult& test : run.tests) {
    if (test.outcome != Outcome::kFailed) continue;
    html += "<article class=\"bad\">" + Element("h3", "", EscapeHtml(test.area + ": " + Words(test.name))) +
            Element("pre", "", EscapeHtml(test.text)) + "</article>\n";
  }
  return html;
}

std::string NotTried(const Run& run) {
  std::string html;
  for (const Reason& reason : ReasonsOf(run)) {
    std::string names;
    for (const std::string& test : reason.tests) names += Element("li", "", EscapeHtml(test));
    html += "<details><summary>" + Element("span", "class=\"line\"", std::to_string(reason.tests.size())) +
            Element("span", "class=\"subject\"", EscapeHtml(reason.text)) + "</summary>" +
            Element("ul", "", names) + "</details>\n";
  }
  return html;
}

std::string OpenAnswers(const Run& run) {
  std::string rows;
  for (const BrowserAnswer& answer : run.answers) {
    if (answer.IsOpen())
      rows += "<tr>" + Cell(answer.question) + Element("td", "class=\"code\"", EscapeHtml(answer.answer)) +
              "</tr>\n";
  }
  return rows.empty() ? rows : Table({"Question", "Answer"}, rows);
}

std::string KnownAnswers(const Run& run, bool differing) {
  std::string rows;
  for (const BrowserAnswer& answer : run.answers) {
    if (answer.IsOpen() || answer.Differs() != differing) continue;
    rows += RowStart(differing) + Cell(answer.question) +
            Element("td", "class=\"code\"", EscapeHtml(answer.answer)) +
            (differing ? Element("td", "class=\"code\"", EscapeHtml(answer.expected)) : "") + "</tr>\n";
  }
  if (rows.empty()) return rows;
  return differing ? Table({"Question", "Answer", "Expected"}, rows) : Table({"Question", "Answer"}, rows);
}

std::string Tests(const Run& run) {
  std::string rows;
  for (const TestResult& test : run.tests) {
    const bool failed = test.outcome == Outcome::kFailed;
    const char* outcome = failed ? "failed" : test.outcome == Outcome::kPassed ? "passed" : "not tried";
    rows += RowStart(failed) + Cell(test.area) + Cell(Words(test.name)) + Cell(outcome) +
            Element("td", "class=\"number\"", TimeOf(test.time)) + "</tr>\n";
  }
  return rows;
}

std::string Folded(std::string_view title, const std::string& inner) {
  if (inner.empty()) return inner;
  return "<details><summary>" + Element("span", "class=\"subject\"", title) + "</summary>\n" + inner +
         "</details>\n";
}

}  // namespace

std::string PageOf(const Run& run) {
  std::string html = player::PageStart("Quillmate self-test");
  html += "<style>\n" + std::string(kPageStyle) + "</style>\n" + Header(run);
  html += Section("areas", "Areas", "", Areas(run));
  html += Section("failed", "Failed", "", Failures(run));
  html += Section("differs", "Answers other than expected",
                  "What this browser answered where another answer is known or documented.",
                  KnownAnswers(run, true));
  html +=
      Section("open", "Answers that nobody knew",
              "No source says how the browser answers these. This is what this one said.", OpenAnswers(run));
  html += Section("not-tried", "Not tried", "", NotTried(run));
  html += Section("known", "Answers as expected", "", Folded("All of them", KnownAnswers(run, false)));
  html += Section("tests", "Every test", "",
                  Folded("All of them", Table({"Area", "Test", "Outcome", "Time"}, Tests(run))));
  return html + "</body>\n</html>\n";
}

}  // namespace quillmate::selftest
