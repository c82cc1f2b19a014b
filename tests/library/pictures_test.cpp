// The screenshot commands and the control information. The pictures are written to the folder that the first
// argument names, with a list of what each must show; check_pictures.py reads them with a decoder that is not
// ours.
#include <windows.h>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "com/encoding.h"
#include "support/page_test.h"

namespace quillmate::test {
namespace {

std::string PictureFolder() {
  const char* named = std::getenv("QUILLMATE_TEST_PICTURES");
  return named != nullptr ? named : ".";
}
const std::string folder = PictureFolder();

/// Four quarters of 32 x 24 pixels in known colours.
const std::string kPage =
    "<!doctype html><style>body{margin:0}#flag{position:absolute;left:50px;top:40px;width:64px;height:48px}"
    "#flag i{position:absolute;width:32px;height:24px}</style><div id=flag>"
    "<i style='background:#f00'></i><i style='background:#0f0;left:32px'></i>"
    "<i style='background:#00f;top:24px'></i><i style='background:#123456;left:32px;top:24px'></i></div>"
    "<p id=text style='margin-top:200px'>Some <b>words</b></p><input id=field value=held>"
    "<button id=button>Caption</button><div id=tall style='height:5000px'></div>";

class Pictures : public PageTest {
 protected:
  static void SetUpTestSuite() {
    PageTest::SetUpTestSuite();
    std::ofstream(folder + "\\expected.txt", std::ios::trunc);
  }
  static std::string FlagCorner() {
    return TextOf(Call("getelementpos", {{"target", "id=flag"}, {"area", "left-top"}}));
  }
  /// Notes what a picture must be: its name, its size, and where in it the four colours begin.
  static void Expect(const std::string& file, int width, int height, int left, int top) {
    std::ofstream list(folder + "\\expected.txt", std::ios::app);
    list << file << ' ' << width << ' ' << height << ' ' << left << ' ' << top << '\n';
  }
};

TEST_F(Pictures, ElementShotsHoldTheElementPixelByPixel) {
  Show(kPage);
  for (const char* file : {"element.png", "element.bmp", "element.tif"}) {
    ASSERT_EQ(Call("takeelementshot", {{"target", "id=flag"}, {"save-path", folder}, {"file-name", file}}),
              Succeeded());
    Expect(file, 64, 48, 0, 0);
  }
}

TEST_F(Pictures, WindowShotsAreAsLargeAsTheScreen) {
  Show(kPage);
  ASSERT_EQ(Call("scrollintoview", {{"target", "id=flag"}}), Succeeded());
  int x = 0;
  int y = 0;
  ASSERT_EQ(sscanf(FlagCorner().c_str(), "%d,%d", &x, &y), 2);
  RECT frame;
  ASSERT_TRUE(GetWindowRect(TheBrowser().Frame(), &frame));
  for (const char* file : {"window.png", "window.bmp", "window.tif"}) {
    // A folder that ends in a separator only doubles it.
    ASSERT_EQ(Call("takescreenshot", {{"save-path", folder + "\\"}, {"file-name", file}}), Succeeded());
    Expect(file, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN), x - frame.left, y - frame.top);
  }
}

TEST_F(Pictures, ShotsLeaveNoDeviceContextBehind) {
  Show(kPage);
  const auto shoot = [] {
    return Call("takeelementshot",
                {{"target", "id=flag"}, {"save-path", folder}, {"file-name", "again.png"}});
  };
  ASSERT_EQ(shoot(), Succeeded());
  const DWORD before = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
  for (int round = 0; round < 5; ++round) ASSERT_EQ(shoot(), Succeeded());
  EXPECT_EQ(GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS), before);
}

TEST_F(Pictures, RefusesWhatItCannotWrite) {
  Show(kPage);
  const std::string failure = "Failed to save image!";
  for (const char* file : {"x.PNG", "x.jpg", "x.tiff", "x.gif", "png", ""}) {
    EXPECT_EQ(Call("takescreenshot", {{"save-path", folder}, {"file-name", file}}), Failed(failure)) << file;
    EXPECT_FALSE(std::filesystem::exists(folder + "\\" + file) && *file != 0) << file;
  }
  EXPECT_EQ(Call("takescreenshot", {{"save-path", folder + "\\missing"}, {"file-name", "x.png"}}),
            Failed(failure));
  EXPECT_EQ(Call("takeelementshot", {{"target", "id=flag"}, {"save-path", folder}, {"file-name", "x.jpg"}}),
            Failed(failure));
  EXPECT_EQ(Call("takeelementshot", {{"target", "id=none"}}), Failed("Element not found!"));
  EXPECT_EQ(Call("takeelementshot", {{"target", "id=tall"}, {"save-path", folder}, {"file-name", "x.png"}}),
            Failed("Failed to scroll the element to the view!"));
}

TEST_F(Pictures, ControlInformationSaysWhereWhatAndWhich) {
  Show(kPage);
  const struct {
    const char* target;
    const char* end;
  } rows[] = {
      {"id=flag", R"("size":{"width":64,"height":48},"tagname":"DIV","text":""})"},
      {"id=text", R"("tagname":"P","text":"Some words"})"},
      {"id=field", R"("tagname":"INPUT","text":"held"})"},
      {"id=button", R"("tagname":"BUTTON","text":"Caption"})"},
      {"id=tall", R"("height":5000},"tagname":"DIV","text":""})"},
  };
  for (const auto& row : rows) {
    const Envelope info = Call("getcontrolinfo", {{"target", row.target}});
    EXPECT_TRUE(info.success) << row.target;
    EXPECT_TRUE(info.result.ends_with(row.end)) << info.result;
  }
  Script("scrollTo(0, 0); 0");
  int x = 0;
  int y = 0;
  ASSERT_EQ(sscanf(FlagCorner().c_str(), "%d,%d", &x, &y), 2);
  const std::string corner = "{\"rect\":{\"left\":" + std::to_string(x) + ",\"top\":" + std::to_string(y) +
                             ",\"right\":" + std::to_string(x + 64) +
                             ",\"bottom\":" + std::to_string(y + 48) + "},";
  EXPECT_TRUE(Call("getcontrolinfo", {{"target", "id=flag"}}).result.starts_with(corner));
}

}  // namespace
}  // namespace quillmate::test
