"""Compiles the package and packs it with the program. Equal contents make equal packages.

usage: build_package.py BINARIES TOOLS OUT     BINARIES: the folder with quillmate-play.exe and quillmate.dll
                                               TOOLS: a folder for the packages that compile it, filled when empty
"""
import pathlib
import shutil
import subprocess
import sys

HERE = pathlib.Path(__file__).resolve().parent
NOTICES = HERE.parent.parent / "build" / "THIRD-PARTY-NOTICES.txt"  # tools/notices writes it
PROGRAMS = ("quillmate-play.exe", "quillmate.dll")


def run(words, folder):
    done = subprocess.run(words, cwd=folder, capture_output=True, text=True)
    if done.returncode != 0:
        sys.exit(f"build_package.py: {' '.join(map(str, words))} failed\n{done.stdout}{done.stderr}")
    return done.stdout


def install_tools(tools):
    """Installs what package.json pins, once."""
    wanted = (HERE / "package.json").read_bytes()
    stamp = tools / "package.json"
    if stamp.exists() and stamp.read_bytes() == wanted and (tools / "node_modules").is_dir():
        return
    shutil.rmtree(tools, ignore_errors=True)
    tools.mkdir(parents=True)
    stamp.write_bytes(wanted)
    run(["npm", "install", "--ignore-scripts", "--no-audit", "--no-fund", "--no-package-lock"], tools)


def compile_into(folder, tools, *words):
    """Compiles a copy of the sources, with the tools at hand."""
    for name in ("src", "test", "tsconfig.json", "tsconfig.test.json", "package.json", "README.md"):
        source = HERE / name
        target = folder / name
        shutil.copytree(source, target) if source.is_dir() else shutil.copy(source, target)
    (folder / "node_modules").symlink_to(tools / "node_modules")
    run(["node", tools / "node_modules/typescript/bin/tsc", *words], folder)


def main(binaries, tools, out):
    tools = pathlib.Path(tools).resolve()
    out = pathlib.Path(out).resolve()
    install_tools(tools)
    work = out / "work"
    shutil.rmtree(work, ignore_errors=True)
    (work / "bin").mkdir(parents=True)
    for name in PROGRAMS:
        shutil.copy(pathlib.Path(binaries) / name, work / "bin" / name)
    if NOTICES.exists():
        shutil.copy(NOTICES, work)
    compile_into(work, tools)
    packed = run(["npm", "pack", "--ignore-scripts", "--silent", "--pack-destination", str(out)], work).split()[-1]
    shutil.rmtree(work)
    print(out / packed)


if __name__ == "__main__":
    main(*sys.argv[1:])
