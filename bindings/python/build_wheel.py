"""Packs the wheel for 64-bit Windows, with the program in it. Equal contents make equal wheels; needs no network.

usage: build_wheel.py BINARIES OUT     BINARIES: the folder with quillmate-play.exe and quillmate.dll
"""
import base64
import hashlib
import pathlib
import re
import sys
import tomllib
import zipfile

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parent.parent
PROGRAMS = ("quillmate-play.exe", "quillmate.dll")
NOTICES = ROOT / "build" / "THIRD-PARTY-NOTICES.txt"  # tools/notices writes it
TAG = "py3-none-win_amd64"
# The first day that an archive can hold in every time zone.
DATE = (1980, 1, 2, 0, 0, 0)


def metadata(project, version):
    lines = ["Metadata-Version: 2.1", f"Name: {project['name']}", f"Version: {version}",
             f"Summary: {project['description']}", f"Requires-Python: {project['requires-python']}",
             *(f"Classifier: {name}" for name in project["classifiers"]),
             "Description-Content-Type: text/markdown", "", (HERE / project["readme"]).read_text(encoding="utf-8")]
    return "\n".join(lines)


def entry_points(project):
    return "".join(f"[{group}]\n" + "".join(f"{name} = {target}\n" for name, target in entries.items())
                   for group, entries in project["entry-points"].items())


def contents(binaries, version):
    """Every file of the wheel but RECORD, by name."""
    project = tomllib.loads((HERE / "pyproject.toml").read_text(encoding="utf-8"))["project"]
    info = f"quillmate-{version}.dist-info"
    files = {f"quillmate/{file.name}": file.read_bytes()
             for file in (HERE / "quillmate").iterdir() if file.suffix in (".py", ".typed")}
    files |= {f"quillmate/bin/{name}": (binaries / name).read_bytes() for name in PROGRAMS}
    if NOTICES.exists():
        files[f"{info}/licenses/{NOTICES.name}"] = NOTICES.read_bytes()
    texts = {"METADATA": metadata(project, version), "entry_points.txt": entry_points(project),
             "WHEEL": f"Wheel-Version: 1.0\nGenerator: build_wheel\nRoot-Is-Purelib: false\nTag: {TAG}\n"}
    return info, files | {f"{info}/{name}": text.encode() for name, text in texts.items()}


def record(info, files):
    def row(name, data):
        digest = base64.urlsafe_b64encode(hashlib.sha256(data).digest()).rstrip(b"=").decode()
        return f"{name},sha256={digest},{len(data)}\n"
    return "".join(row(name, files[name]) for name in sorted(files)) + f"{info}/RECORD,,\n"


def main(binaries, out):
    header = (ROOT / "include" / "quillmate.h").read_text(encoding="utf-8")
    version = re.search(r'#define QUILLMATE_VERSION "(.*)"', header)[1]
    info, files = contents(pathlib.Path(binaries), version)
    listing = record(info, files)
    path = pathlib.Path(out) / f"quillmate-{version}-{TAG}.whl"
    path.parent.mkdir(parents=True, exist_ok=True)
    with zipfile.ZipFile(path, "w") as wheel:
        for name, data in [*sorted(files.items()), (f"{info}/RECORD", listing.encode())]:
            entry = zipfile.ZipInfo(name, DATE)
            entry.compress_type = zipfile.ZIP_DEFLATED
            entry.external_attr = 0o644 << 16
            wheel.writestr(entry, data)
    print(path)


main(*sys.argv[1:])
