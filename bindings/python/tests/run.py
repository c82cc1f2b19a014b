"""Builds the wheel twice, unpacks it, and tests what is in it.

usage: run.py BINARIES [COMMAND...]     COMMAND runs a Windows program
"""
import base64
import csv
import hashlib
import os
import pathlib
import shlex
import subprocess
import sys
import tempfile
import zipfile

HERE = pathlib.Path(__file__).resolve().parent


def build(binaries, folder):
    run = subprocess.run([sys.executable, str(HERE.parent / "build_wheel.py"), binaries, folder], check=True,
                         capture_output=True, text=True)
    return pathlib.Path(run.stdout.strip())


def check_record(wheel):
    names = set(wheel.namelist())
    record = next(name for name in names if name.endswith("/RECORD"))
    for name, digest, size in csv.reader(wheel.read(record).decode().splitlines()):
        names.remove(name)
        if name != record:
            data = wheel.read(name)
            wanted = base64.urlsafe_b64encode(hashlib.sha256(data).digest()).rstrip(b"=").decode()
            assert (digest, int(size)) == ("sha256=" + wanted, len(data)), name
    assert not names, names


def main(binaries, *runner):
    with tempfile.TemporaryDirectory(ignore_cleanup_errors=True) as folder:
        first, second = (build(binaries, f"{folder}/{n}") for n in (1, 2))
        assert first.read_bytes() == second.read_bytes(), "two builds differ"
        site = pathlib.Path(folder, "site")
        with zipfile.ZipFile(first) as wheel:
            check_record(wheel)
            wheel.extractall(site)
        program = site / "quillmate" / "bin" / "quillmate-play.exe"
        environment = dict(os.environ, PYTHONPATH=str(site), QUILLMATE_PLAYER=shlex.join([*runner, str(program)]))
        subprocess.run([sys.executable, "-m", "pytest", "-q", "-p", "no:cacheprovider", str(HERE)],
                       env=environment, check=True)
        subprocess.run([sys.executable, "-m", "mypy", "--strict", "--python-version", "3.9", "--cache-dir", folder, "-p", "quillmate"],
                       env=environment, cwd=site, check=True)


main(*sys.argv[1:])
