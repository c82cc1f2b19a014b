#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "bare_client.h"
#include "measures.h"
#include "report.h"

namespace quillmate::bench {
namespace {

constexpr int kColumns = 10;

std::string Table(int rows) {
  std::string html = "<table id=t>";
  for (int row = 0; row < rows; ++row) {
    html += "<tr>";
    for (int column = 0; column < kColumns; ++column) {
      html += "<td>cell " + std::to_string(row) + '.' + std::to_string(column);
    }
  }
  return html + "</table>";
}

/// @return a body of spans, the last one with an id and a title of its own.
std::string Spans(int count) {
  std::string html;
  for (int i = 1; i < count; ++i) html += "<span id=s" + std::to_string(i) + " title=t>" + "x</span>";
  return html + "<span id=last title=last class=last>last</span><input name=last>";
}

/// Runs the script in its own process, as a user would. @return the milliseconds that it measured itself.
double TimeOfScript(const std::string& url, int cells) {
  const std::string output = (std::filesystem::temp_directory_path() / "quillmate-bench.txt").string();
  const std::string command =
      "cscript.exe //nologo \"" QUILLMATE_BENCH_SCRIPT "\" " + url + " > \"" + output + '"';
  if (std::system(command.c_str()) != 0) throw std::runtime_error("cscript cannot run the script");
  int read = 0;
  double milliseconds = 0;
  std::ifstream(output) >> read >> milliseconds;
  if (read != cells) throw std::runtime_error("the script did not read the table");
  return milliseconds;
}

void MeasureTable(Desk& desk, int rows, int rounds, bool with_script) {
  const std::string url = desk.Show(Table(rows));
  const BareClient bare(desk.Page());
  const Pair times = SideBySide(
      rounds,
      [] {
        Demand("gettable", {{"by", "id=t"}});
      },
      [&] { bare.ReadTable(L"t"); });
  const int cells = rows * kColumns;
  const std::string size = std::to_string(rows) + "x" + std::to_string(kColumns);
  PrintPoint("table", "quillmate", cells, times.ours);
  PrintPoint("table", "bare loop", cells, times.reference);
  if (rows >= 50) PrintMeasure("gettable " + size + " / bare loop", times.Ratio(), Wanted::kAtMost, 0.40);
  if (!with_script) return;
  const double script = TimeOfScript(url, cells);
  PrintPoint("table", "late-bound script", cells, script);
  PrintMeasure("gettable " + size + " / script", times.ours / script, Wanted::kAtMost, 0.20);
}

double TimeOfSearch(const std::string& target) {
  return TimeOf([&] { test::Call("iselementexist", {{"target", target}}); });
}

/// The shortest and the longest time of a locator on pages of growing size.
struct Growth {
  double shortest = 1e9;
  double longest = 0;
  void Note(double milliseconds) {
    shortest = std::min(shortest, milliseconds);
    longest = std::max(longest, milliseconds);
  }
};

double ShortestOf(int rounds, const std::string& target) {
  double shortest = TimeOfSearch(target);
  for (int round = 1; round < rounds; ++round) shortest = std::min(shortest, TimeOfSearch(target));
  return shortest;
}

void MeasureDirect(const std::string& kind, const std::function<void()>& raw) {
  const Pair times = SideBySide(
      30,
      [&] {
        Demand("iselementexist", {{"target", kind + "=last"}});
      },
      raw);
  PrintMeasure(kind + "= / one raw call", times.Ratio(), Wanted::kAtMost, 1.3);
}

}  // namespace

void MeasureTables(Desk& desk) {
  MeasureTable(desk, 5, 3, false);
  MeasureTable(desk, 20, 3, false);
  MeasureTable(desk, 50, 2, true);
  MeasureTable(desk, 500, 1, true);
}

void MeasureIdPaths(Desk& desk) {
  constexpr int kSizes[] = {100, 1000, 10000};
  constexpr const char* kForms[] = {"xpath=//*[@id='", "xpath=//span[@id='"};
  Growth found[2];
  Growth absent[2];
  for (const int size : kSizes) {
    desk.Show(Spans(size));
    for (int form = 0; form < 2; ++form) {
      found[form].Note(ShortestOf(10, kForms[form] + std::string("last']")));
      // One round: where nothing asks the document directly, an absent element costs minutes.
      absent[form].Note(ShortestOf(size > 1000 ? 1 : 10, kForms[form] + std::string("none']")));
      PrintPoint("id path", kForms[form] + 6 + std::string("…'] found"), size, found[form].longest);
      PrintPoint("id path", kForms[form] + 6 + std::string("…'] absent"), size, absent[form].longest);
    }
  }
  for (int form = 0; form < 2; ++form) {
    const std::string name = kForms[form] + 6 + std::string("…']");
    PrintMeasure(name + " found, growth", found[form].longest / found[form].shortest, Wanted::kAtMost, 1.5);
    PrintMeasure(name + " absent, growth", absent[form].longest / absent[form].shortest, Wanted::kAtMost,
                 1.5);
  }
}

void MeasureWalk(Desk& desk) {
  constexpr int kSizes[] = {50, 100, 200, 400};
  for (const int size : kSizes) {
    desk.Show(Spans(size));
    const BareClient bare(desk.Page());
    const Pair times = SideBySide(
        3,
        [] {
          Demand("getelementcount", {{"target", "xpath=//span[@title='last']"}});
        },
        [&] { bare.FindByAttribute(L"span", L"title", L"last"); });
    PrintPoint("walk", "quillmate", size, times.ours);
    PrintPoint("walk", "bare loop", size, times.reference);
    if (size == 400) PrintMeasure("walk / bare loop", times.Ratio(), Wanted::kAtMost, 0.5);
  }
}

void MeasureDirectLocators(Desk& desk) {
  desk.Show(Spans(100));
  const BareClient bare(desk.Page());
  MeasureDirect("id", [&] { bare.FindById(L"last"); });
  MeasureDirect("class", [&] { bare.FindByClass(L"last"); });
  MeasureDirect("name", [&] { bare.FindByName(L"last"); });
}

void MeasureFrames(Desk& desk) {
  std::string url = desk.Serve("/level3", "<p id=p>level 3</p>");
  for (const char* level : {"2", "1"}) {
    url = desk.Serve(std::string("/level") + level,
                     std::string("<p id=p>level ") + level + "</p><iframe src='" + url + "'></iframe>");
  }
  desk.Show("<p id=p>level 0</p><iframe src='" + url + "'></iframe>");
  const BareClient bare(desk.Page());
  for (int depth = 1; depth <= 3; ++depth) {
    Demand("selectframe", {{"target", "index=0"}});
    const Pair times = SideBySide(
        20,
        [] {
          Demand("gettext", {{"target", "id=p"}});
        },
        [&] { bare.TextInFirstFrames(depth, L"p"); });
    PrintPoint("frames", "quillmate", depth, times.ours);
    PrintPoint("frames", "by hand", depth, times.reference);
    if (depth == 3) PrintMeasure("text three frames deep / by hand", times.Ratio(), Wanted::kAtMost, 1.2);
  }
}

}  // namespace quillmate::bench
