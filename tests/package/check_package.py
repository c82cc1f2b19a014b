#!/usr/bin/python3
"""Installs the package into an empty folder and builds and runs a program that has nothing else.

usage: check_package.py SOURCE_DIR BUILD_DIR     after the build
"""

import os
import pathlib
import shlex
import shutil
import subprocess
import sys
import tempfile

COMPILER = "x86_64-w64-mingw32-gcc-posix"


def run(*command, **options):
    done = subprocess.run([str(word) for word in command], capture_output=True, text=True, check=False, **options)
    if done.returncode != 0:
        sys.exit(f"{' '.join(map(str, command))} failed with {done.returncode}:\n{done.stdout}{done.stderr}")
    return done.stdout


def run_beside_library(source, stage, program):
    shutil.copy(stage / "bin/quillmate.dll", program.parent)
    run(source / "tools/wine", program)


def check_cmake(source, stage, work):
    run("cmake", "-G", "Ninja", "-S", source / "tests/package/consumer", "-B", work, "-DCMAKE_SYSTEM_NAME=Windows",
        f"-DCMAKE_C_COMPILER={COMPILER}", f"-DCMAKE_PREFIX_PATH={stage}")  # fmt: skip
    run("cmake", "--build", work)
    run_beside_library(source, stage, work / "consumer.exe")


def check_sample_hosts(stage, work):
    """The samples build from the package alone; the tests of the DLL run them."""
    run("cmake", "-G", "Ninja", "-S", stage / "share/doc/quillmate/examples/hosts", "-B", work,
        "-DCMAKE_SYSTEM_NAME=Windows", f"-DCMAKE_C_COMPILER={COMPILER}",
        f"-DCMAKE_CXX_COMPILER={COMPILER.replace('gcc', 'g++')}", f"-DCMAKE_PREFIX_PATH={stage}")  # fmt: skip
    run("cmake", "--build", work)


def check_pkg_config(source, stage, work):
    surroundings = dict(os.environ, PKG_CONFIG_LIBDIR=str(stage / "lib/pkgconfig"))
    flags = shlex.split(run("pkg-config", "--cflags", "--libs", "quillmate", env=surroundings))
    work.mkdir()
    run(COMPILER, source / "tests/package/consumer/consumer.c", "-o", work / "consumer.exe", *flags)
    run_beside_library(source, stage, work / "consumer.exe")


def check_self_test(source, stage):
    names = run(source / "tools/wine", stage / "bin/quillmate-selftest.exe", "--list", "--filter", "Facts.*:Forms.*")
    if "Facts." not in names or "Forms." not in names:
        sys.exit(f"quillmate-selftest --list names no tests:\n{names}")


def main(source, build):
    source, build = pathlib.Path(source), pathlib.Path(build)
    with tempfile.TemporaryDirectory() as temporary:
        temporary = pathlib.Path(temporary)
        stage = temporary / "a folder" / "quillmate"
        run("cmake", "--install", build, "--prefix", stage)
        check_cmake(source, stage, temporary / "cmake")
        check_sample_hosts(stage, temporary / "hosts")
        check_pkg_config(source, stage, temporary / "pkg-config")
        check_self_test(source, stage)
        missing = [name for name in ("README.txt", "bin/quillmate-play.exe", "lib/quillmate.lib") if not (stage / name).exists()]
        if missing:
            sys.exit(f"the package lacks {missing}")


main(*sys.argv[1:])
