#!/usr/bin/python3
"""Runs the self-test as a user does, with the test browser registered as Internet Explorer, and reads its report.

usage: check_selftest.py SOURCE_DIR QUILLMATE_SELFTEST_EXE     in an environment that tools/wine makes
"""

import html
import os
import pathlib
import re
import subprocess
import sys
import tempfile

QUICK = ("Facts.*:UnknownAnswers.EvalOfAWindow:Geometry.*:Forms.ChoosesOptionsAndTellsThePageOfRealChangesOnly:"
         "Tables.ACellCosts*:Pointer.ManualClickLandsOnTheMiddle:BrowserSession.HostedTabs*")  # fmt: skip
# The second takes longer than it may; the third comes after it.
SLOW = "Waits.PresenceAndVisibility:Waits.SeesWhatComesAndGoesMeanwhile:Waits.AnswerAtOnceWhenNothingIsToBeWaitedFor"
NOT_TRIED = {
    "UnknownAnswers.EvalOfAWindow": "It has the browser answer one way and another.",
    "Tables.ACellCostsOneCallAndItsRelease": "It counts or refuses calls inside the browser.",
    "Pointer.ManualClickLandsOnTheMiddle": "It takes the mouse or the keyboard, which this run leaves alone.",
    "BrowserSession.HostedTabsAreCountedActivatedAndClosed": "It needs Edge in Internet Explorer mode.",
}


def expect(condition, what):
    if not condition:
        sys.exit(f"self-test: {what}")


class Run:
    """One run of the program: its exit code, its screen, its report as sections by their names."""

    def __init__(self, source, program, folder, *options):
        report = folder / "report of a run.html"
        command = [source / "tools/wine", program, "--browser", "ie", "--no-input", "--report", f"Z:{report}", *options]
        done = subprocess.run(list(map(str, command)), capture_output=True, text=True, check=False, cwd=folder)
        self.code, self.screen = done.returncode, done.stdout + done.stderr
        self.page = report.read_text(encoding="utf-8") if report.exists() else ""
        parts = re.findall(r'<section id="([\w-]+)">(.*?)</section>', self.page, re.DOTALL)
        self.sections = {name: html.unescape(text) for name, text in parts}


def check_quick_run(source, program, folder):
    run = Run(source, program, folder, "--filter", QUICK)
    expect(run.code == 0, f"exit code {run.code}:\n{run.screen}")
    for test, reason in NOT_TRIED.items():
        expect(re.search(rf"not tried +[\d.]+ s  {re.escape(test)}", run.screen), f"{test} was tried:\n{run.screen}")
        expect(reason in run.sections.get("not-tried", ""), f"no reason {reason}")
    for test in ("Facts.HoldInTheirModes", "Forms.ChoosesOptionsAndTellsThePageOfRealChangesOnly"):
        expect(re.search(rf"passed +[\d.]+ s  {re.escape(test)}", run.screen), f"{test} did not pass:\n{run.screen}")
    expect("window-chain in mode 11" in run.sections["known"], "no facts in the report")
    expect("differs" not in run.sections, f"the browser differs:\n{run.sections.get('differs')}")
    expect(not re.search(r'(?:src|href)="(?!#)', run.page), "the report needs other files")


def check_a_test_that_hangs(source, program, folder):
    run = Run(source, program, folder, "--limit", "5", "--filter", SLOW)
    expect(run.code == 1, f"exit code {run.code} after a test that hung:\n{run.screen}")
    expect("It did not end within 5 s." in run.sections["failed"], f"the hang is not told:\n{run.screen}")
    expect(run.screen.count(" passed ") >= 2 + 1, f"the tests around it did not pass:\n{run.screen}")


def main(source, program):
    source = pathlib.Path(source)
    with tempfile.TemporaryDirectory() as folder:
        check_quick_run(source, program, pathlib.Path(folder))
        check_a_test_that_hangs(source, program, pathlib.Path(folder))
    left = list(pathlib.Path(os.environ["WINEPREFIX"], "drive_c/users").glob("**/Temp/quillmate-selftest-*"))
    expect(not left, f"left behind: {left}")


main(*sys.argv[1:])
