"""Compares the header and the command reference with the list of commands: names, order of parameters.

usage: check_reference.py COMMAND_LIST HEADER REFERENCE
"""
import re
import sys


def listed(text):
    rows = re.findall(r"^QUILLMATE_(?:SAME_)?COMMAND\((\w+), ([^\n]*)\)$", text, re.MULTILINE)
    return {name: re.findall(r'"([^"]+)"', rest) for name, rest in rows}


def declared(text):
    commands = {}
    for comment, name in re.findall(r"/\*\*\n((?: \*[^\n]*\n)+?) \*/\nQUILLMATE_API const char\* (\w+)\(", text):
        commands[name] = re.findall(r'^ \* +- "([^"]+)":', comment, re.MULTILINE)
    return commands


def described(text):
    sections = re.split(r"^### ", text, flags=re.MULTILINE)[1:]
    return {s.split("\n", 1)[0]: re.findall(r'^\| "([^"]+)" \|', s, re.MULTILINE) for s in sections}


def main(list_path, header_path, reference_path):
    wanted = listed(open(list_path).read())
    problems = [] if len(wanted) == 61 else [f"the list has {len(wanted)} commands"]
    for path, read in ((header_path, declared), (reference_path, described)):
        found = read(open(path).read())
        for name in sorted(wanted.keys() | found.keys()):
            # Parameters stand in any order there; the order of reading is that of the checks.
            if sorted(wanted.get(name, ["?"])) != sorted(found.get(name, ["?"])):
                problems.append(f"{path}: {name}: {found.get(name)}, the list has {wanted.get(name)}")
    return "\n".join(problems) or None  # None is success


sys.exit(main(*sys.argv[1:]))
