"""Checks the includes of a source tree against its layers.

usage: check_layers.py SOURCE_FOLDER

SOURCE_FOLDER/layers.txt lists the layers from the lowest up: a layer's name stands at the beginning of a line, the
patterns of its files stand indented below it.
"""
import fnmatch
import pathlib
import re
import sys

INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.MULTILINE)
SUFFIXES = (".h", ".cpp", ".inc")


def read_layers(text):
    """Every pattern with the number of its layer, and the layers' names."""
    names, patterns = [], []
    for line in text.splitlines():
        if not line.strip() or line.startswith("#"):
            continue
        if line[0].isspace():
            patterns.append((line.strip(), len(names) - 1))
        else:
            names.append(line.strip())
    return names, patterns


def is_match(path, pattern):
    # A "*" stays within its folder.
    if path.count("/") != pattern.count("/"):
        return False
    return any(fnmatch.fnmatchcase(path, pattern + suffix) for suffix in ("", ".h", ".cpp"))


def find_ring(edges):
    """A list of folders that depend on each other in a circle; empty when there is none."""
    def visit(folder, path):
        if folder in path:
            return path[path.index(folder):] + [folder]
        for other in sorted(edges.get(folder, ())):
            if ring := visit(other, path + [folder]):
                return ring
        return []
    return next((ring for folder in sorted(edges) if (ring := visit(folder, []))), [])


def folder_of(path):
    return path.rpartition("/")[0]


def layers_of(files, patterns, problems):
    layers = {}
    for path in files:
        found = {layer for pattern, layer in patterns if is_match(path, pattern)}
        if len(found) == 1:
            layers[path] = found.pop()
        else:
            problems.append(f"{path}: stands in {len(found)} layers instead of one")
    for pattern, _ in patterns:
        if not any(is_match(path, pattern) for path in files):
            problems.append(f"layers.txt: no file matches {pattern}")
    return layers


def check(root):
    names, patterns = read_layers((root / "layers.txt").read_text(encoding="utf-8"))
    files = sorted(str(path.relative_to(root).as_posix()) for path in root.rglob("*") if path.suffix in SUFFIXES)
    problems, edges = [], {}
    layers = layers_of(files, patterns, problems)
    for path, layer in layers.items():
        for included in INCLUDE.findall((root / path).read_text(encoding="utf-8")):
            if included not in files:
                problems.append(f"{path}: {included} is no file of this tree")
            elif layers.get(included, 0) > layer:
                problems.append(f"{path} ({names[layer]}) includes {included} ({names[layers[included]]}), a higher layer")
            elif layers.get(included) == layer and (folder := folder_of(path)) != (other := folder_of(included)):
                edges.setdefault(layer, {}).setdefault(folder, set()).add(other)
    for layer, within in edges.items():
        if ring := find_ring(within):
            problems.append(f"{names[layer]}: folders depend on each other: {' -> '.join(ring)}")
    if not layers:
        problems.append("no file has a layer")
    return problems


if __name__ == "__main__":
    found = check(pathlib.Path(sys.argv[1]))
    for problem in found:
        print(problem)
    sys.exit(1 if found else 0)
