// Writes a report into the folder named by its argument, with everything that could tear a page apart in it.
#include <iostream>

#include "fake_host.h"
#include "printers.h"
#include "report.h"

namespace {

using namespace quillmate::player;

// One red pixel.
constexpr unsigned char kPicture[] = {0x89, 0x50, 0x4E, 0x47, 0x0D, 0x0A, 0x1A, 0x0A, 0x00, 0x00, 0x00, 0x0D,
                                      0x49, 0x48, 0x44, 0x52, 0x00, 0x00, 0x00, 0x01, 0x00, 0x00, 0x00, 0x01,
                                      0x08, 0x02, 0x00, 0x00, 0x00, 0x90, 0x77, 0x53, 0xDE, 0x00, 0x00, 0x00,
                                      0x0C, 0x49, 0x44, 0x41, 0x54, 0x78, 0x9C, 0x63, 0xF8, 0xCF, 0xC0, 0x00,
                                      0x00, 0x03, 0x01, 0x01, 0x00, 0xC9, 0xFE, 0x92, 0xEF, 0x00, 0x00, 0x00,
                                      0x00, 0x49, 0x45, 0x4E, 0x44, 0xAE, 0x42, 0x60, 0x82};

constexpr std::string_view kScript = R"({"command":"open","target":"file:///C:/an/address/of/LONG/end.html"}
{"command":"gettable","by":"id=lines","shot":true}
{"command":"gettext","target":"xpath=//div[@class='LONG']/span[2]","expect":{"result":"LONG"}}
{"command":"movetoelementwithoffset","target":"<img src=nowhere onerror=alert(1)>","value":"<script>alert(2)</script>"}
{"command":"pagesource"})";

std::string Lengthened(std::string_view text) {
  std::string filled(text);
  for (std::size_t at; (at = filled.find("LONG")) != std::string::npos;)
    filled.replace(at, 4, std::string(300, 'w'));
  return filled;
}

std::string WideTable() {
  std::string cells = R"(\"a cell of some length\")";
  for (int i = 0; i < 30; ++i) cells += R"(,\"a cell of some length\")";
  return R"({"success":true,"result":"[[)" + cells + "],[" + cells + "]]\"}";
}

}  // namespace

int main(int, char** arguments) {
  const std::filesystem::path folder = arguments[1];
  std::filesystem::create_directories(folder);
  const std::string script = Lengthened(kScript);
  const auto steps = ParseScript(script, {});
  FakeHost host(
      {{"open", R"({"success":true,"result":true})"},
       {"gettable", WideTable()},
       {"gettext", Lengthened(R"({"success":true,"result":"LONGLONGLONG other"})")},
       {"movetoelementwithoffset", R"({"success":false,"result":0,"log":"</section></main><b>no"})"},
       {"pagesource", R"({"success":true,"result":"<html>\n<body onload=\"alert(3)\"></html>"})"}});
  Report report(folder, "sample.jsonl", *steps, [&folder](const std::string& name) {
    std::ofstream(folder / name, std::ios::binary)
        .write(reinterpret_cast<const char*>(kPicture), sizeof kPicture);
    return std::string();
  });
  Observer* observers[] = {&report};
  const RunSettings settings{.keep_going = true,
                             .decode = [](std::string_view bytes) { return std::string(bytes); }};
  std::cout << SummaryText(Play(*steps, host, settings, observers)) << "\n";
  return report.Good() ? 0 : 1;
}
