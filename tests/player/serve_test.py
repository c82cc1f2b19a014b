"""Talks to the server as a client would: the real library and a real page.

usage: serve_test.py PLAYER COMMAND...   COMMAND runs a Windows program
"""
import json
import os
import pathlib
import signal
import subprocess
import sys
import tempfile
import time
import unittest

PLAYER = sys.argv[1]
RUN = sys.argv[2:]
PAGE = """<!DOCTYPE html><title>Serve \u00e9</title><p id=p>caf\u00e9</p><button id=b onclick="alert('Really?')">B</button>
<input id=i value=x><table id=t><tr><td>A</td><td>\u00e9</td></tr></table>"""


class Session:
    """One server and its pipes."""

    def __init__(self, *options):
        self.process = subprocess.Popen([*RUN, PLAYER, "--serve", *options], stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        self.hello = self.read()

    def read(self):
        line = self.process.stdout.readline()
        return json.loads(line) if line else None

    def send(self, **request):
        self.process.stdin.write(json.dumps(request, ensure_ascii=False).encode() + b"\n")
        self.process.stdin.flush()

    def ask(self, **request):
        self.send(**request)
        return self.read()

    def close(self):
        self.process.stdin.close()
        rest = self.process.stdout.read()
        self.process.stdout.close()
        return rest, self.process.wait(60)


def player_process():
    """The newest Linux process that is a serving player of this build on this test's desktop."""
    wanted = pathlib.PurePath(PLAYER).name
    desktop = b"WINEPREFIX=" + os.environb.get(b"WINEPREFIX", b"")
    found = []
    for entry in os.listdir("/proc"):
        try:
            words = pathlib.Path("/proc", entry, "cmdline").read_bytes().split(b"\0")
            settings = pathlib.Path("/proc", entry, "environ").read_bytes().split(b"\0")
        except OSError:
            continue
        if b"--serve" in words and desktop in settings and any(wanted.encode() in word for word in words):
            found.append(int(entry))
    return max(found)


def no_browser_is_left():
    session = Session()
    try:
        for _ in range(20):
            answer = session.ask(command="selectwindowuntop", target="title=Serve \u00e9")
            if not answer["success"]:
                return True
            time.sleep(0.5)
        return False
    finally:
        session.close()


class Serve(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory(ignore_cleanup_errors=True)
        self.addCleanup(self.folder.cleanup)
        page = pathlib.Path(self.folder.name, "page.html")
        page.write_text(PAGE.replace("<title>", "<meta charset=utf-8><title>"), encoding="utf-8")
        self.page = "file:///Z:" + str(page)

    def session(self, *options):
        session = Session("--close-browsers", *options)
        self.addCleanup(session.process.stdout.close)
        self.addCleanup(session.process.stdin.close)
        self.addCleanup(session.process.kill)
        self.assertTrue(session.ask(command="open", target=self.page)["success"])
        return session

    def test_drives_a_page(self):
        shots = self.folder.name + "/new/shots"
        session = self.session("--shots", shots)
        self.assertEqual((session.hello["hello"], session.hello["protocol"]), ("quillmate", 1))
        self.assertEqual(session.hello["commands"]["click"], ["target", "manual-click"])
        self.assertEqual(session.ask(id=1, command="gettext", target="id=p")["result"], "caf\u00e9")
        table = session.ask(id=2, command="gettable", by="id=t")
        self.assertEqual(table["result"], [[0, 1], ["A", "\u00e9"]])
        self.assertEqual(session.ask(command="getcontrolinfo", target="id=i")["result"]["text"], "x")
        failed = session.ask(id=3, command="gettext", target="id=none")
        self.assertEqual((failed["id"], failed["success"], failed["log"]), (3, False, "Element not found!"))
        saved = pathlib.Path(shots, failed["picture"].rpartition("\\")[2])
        self.assertTrue(saved.read_bytes().startswith(b"\x89PNG"))
        self.assertEqual(session.ask(command="clikc")["column"], 13)
        self.assertEqual(session.close(), (b"", 0))
        self.assertTrue(no_browser_is_left())

    def test_goes_on_after_a_request_that_took_too_long(self):
        session = self.session()
        late = session.ask(id=1, command="waitshow", target="id=none", **{"time-out": 300})
        self.assertTrue(late["timed-out"])
        self.assertLess(late["ms"], 3000)
        self.assertEqual(session.ask(id=2, command="gettext", target="id=p")["result"], "caf\u00e9")
        session.close()

    def test_leaves_nothing_behind_when_it_is_killed(self):
        session = self.session()
        self.assertTrue(session.ask(command="click", target="id=b")["success"])  # a message box is open now
        os.kill(player_process(), signal.SIGKILL)
        self.assertTrue(no_browser_is_left())

    def test_takes_a_line_of_any_length(self):
        session = Session()
        block = b"x" * (1 << 20)
        for _ in range(200):
            session.process.stdin.write(block)
        session.process.stdin.write(b"\n")
        session.process.stdin.flush()
        self.assertEqual(session.read()["error"], "the line is too long")
        self.assertIn("error", session.ask(command="no"))
        self.assertEqual(session.close(), (b"", 0))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
