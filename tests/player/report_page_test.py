"""Opens a report in a browser engine, at phone and desk width, in the light and in the dark.

usage: report_page_test.py SAMPLE_REPORT_PROGRAM
The page is looked at from a frame of a page beside it, which writes down what it measured.
"""
import json
import os
import re
import subprocess
import sys
import tempfile
import unittest

WIDTHS = (360, 1200)
PROBE = """<!DOCTYPE html><body><script>
function luminance(color) {
  var parts = color.match(/[\\d.]+/g).slice(0, 3).map(function (part) {
    var share = part / 255;
    return share <= 0.03928 ? share / 12.92 : Math.pow((share + 0.055) / 1.055, 2.4);
  });
  return 0.2126 * parts[0] + 0.7152 * parts[1] + 0.0722 * parts[2];
}
function contrast(one, other) {
  var pair = [luminance(one), luminance(other)].sort(function (a, b) { return b - a; });
  return (pair[0] + 0.05) / (pair[1] + 0.05);
}
function measure(page, width) {
  var style = function (selector) { return page.defaultView.getComputedStyle(page.querySelector(selector)); };
  var card = style('section').backgroundColor;
  var images = [].slice.call(page.images);
  return {
    width: width,
    overflow: page.documentElement.scrollWidth - page.documentElement.clientWidth,
    outside: [].slice.call(page.querySelectorAll('body *')).filter(function (element) {
      return !element.closest('.wide') && element.getBoundingClientRect().right > width + 1;
    }).map(function (element) { return element.outerHTML.slice(0, 80); }),
    background: luminance(style('body').backgroundColor),
    contrasts: ['.subject', '.answer', '.bad .answer', '.time', '.outcome', 'dt', 'pre', '.command'].map(function (part) {
      return [part, contrast(style(part).color, card)];
    }),
    images: images.length,
    broken: images.filter(function (image) { return !image.naturalWidth; }).length,
    sections: page.querySelectorAll('main > section').length,
    bars: page.querySelectorAll('.times a').length,
    scripts: page.querySelectorAll('script, [onerror], [onload], link, b').length,
    open: page.querySelectorAll('details[open]').length
  };
}
var found = [], widths = WIDTHS;
widths.forEach(function (width) {
  var frame = document.createElement('iframe');
  frame.width = width; frame.height = 800; frame.style.border = 0; frame.src = 'report.html';
  frame.onload = function () {
    found.push(measure(frame.contentDocument, width));
    if (found.length === widths.length) document.body.innerHTML = '<pre id="found">' + JSON.stringify(found) + '</pre>';
  };
  document.body.appendChild(frame);
});
</script>"""


def look(folder, dark):
    with open(os.path.join(folder, "probe.html"), "w", encoding="utf-8") as probe:
        probe.write(PROBE.replace("WIDTHS", json.dumps(WIDTHS)))
    run = subprocess.run(
        ["/usr/lib/chromium/chromium", "--headless=new", "--no-sandbox", "--disable-gpu", "--no-first-run",
         "--allow-file-access-from-files", "--host-resolver-rules=MAP * ~NOTFOUND", "--enable-logging=stderr",
         "--user-data-dir=" + os.path.join(folder, "profile"), "--window-size=1400,1000",
         "--blink-settings=preferredColorScheme=%d" % (0 if dark else 1), "--virtual-time-budget=5000", "--dump-dom",
         "file://" + os.path.join(folder, "probe.html")],
        capture_output=True, encoding="utf-8", timeout=90, check=True)
    found = re.search(r'<pre id="found">(.*?)</pre>', run.stdout, re.S)
    console = [line for line in run.stderr.splitlines() if "CONSOLE" in line]
    text = re.sub("&lt;", "<", re.sub("&gt;", ">", re.sub("&amp;", "&", found.group(1))))
    return json.loads(text), console


class ReportPage(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.place = tempfile.TemporaryDirectory(ignore_cleanup_errors=True)
        subprocess.run([sys.argv[-1], cls.place.name], check=True, capture_output=True)

    @classmethod
    def tearDownClass(cls):
        cls.place.cleanup()

    def test_holds_together_at_every_width_in_the_light_and_in_the_dark(self):
        for dark in (False, True):
            pages, console = look(self.place.name, dark)
            self.assertEqual(console, [])
            self.assertEqual(sorted(page["width"] for page in pages), sorted(WIDTHS))
            for page in pages:
                with self.subTest(width=page["width"], dark=dark):
                    self.assertLessEqual(page["overflow"], 0)
                    self.assertEqual(page["outside"], [])
                    self.assertEqual(page["background"] < 0.1, dark)
                    for part, contrast in page["contrasts"]:
                        self.assertGreaterEqual(contrast, 4.5, part)
                    self.assertEqual((page["images"], page["broken"]), (3, 0))
                    self.assertEqual((page["sections"], page["bars"], page["open"]), (5, 5, 2))
                    self.assertEqual(page["scripts"], 0)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
