"""Writes the methods of the bindings, one a command, from the contract in include/quillmate.h.

usage: generate.py [--check]     --check: changes nothing and fails when a file differs
"""
import pathlib
import re
import sys
import textwrap

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent / "tools"))
import contract  # noqa: E402

HEADER = HERE.parent / "include" / "quillmate.h"
COMMAND_LISTS = ("src/command_list.inc", "src/api/command_list.inc")
PYTHON_RESULTS = {"success": "None", "text": "str", "text in UTF-8": "str", "text in the second buffer": "str",
                  "number": "int", "boolean": "bool", "object": "Dict[str, Any]",
                  "array as text in UTF-8": "List[List[Any]]", "text or number": "Union[str, int]",
                  "text, number or success": "Union[str, int, bool]"}
NODE_RESULTS = {"success": "void", "text": "string", "text in UTF-8": "string", "text in the second buffer": "string",
                "number": "number", "boolean": "boolean", "object": "ControlInfo", "array as text in UTF-8": "Table",
                "text or number": "string | number", "text, number or success": "string | number | boolean"}


def kind_of(parameter):
    if re.search(r"[XW]\w*,[YH]", parameter.shape):
        return "pair"
    if parameter.shape == "word" or '"True"' in parameter.shape:
        return "switch"
    return "text"


def in_order(command):
    """What has to be given comes first, and of that the target, so that it needs no name."""
    return sorted(command.parameters, key=lambda p: (p.may_be_empty, p.name != "target" or p.may_be_empty))


def listed():
    path = next(HERE.parent / name for name in COMMAND_LISTS if (HERE.parent / name).exists())
    rows = re.findall(r"^QUILLMATE_(?:SAME_)?COMMAND\((\w+), ([^\n]*)\)$", path.read_text(), re.MULTILINE)
    return {name: sorted(re.findall(r'"([^"]+)"', rest)) for name, rest in rows}


def commands():
    found = contract.read(HEADER).commands()
    if {c.name: sorted(p.name for p in c.parameters) for c in found} != listed():
        sys.exit("generate.py: the header and the list of commands differ")
    return found


def sentences(command):
    """The paragraphs of a method's comment."""
    yield command.summary
    for parameter in in_order(command):
        yield f"{{{parameter.name}}}: {parameter.meaning} ({parameter.shape})"
    if command.result:
        yield f"Returns: {command.result}"
    yield from command.notes


def wrapped(text, indent, first=""):
    return textwrap.fill(text, 110, initial_indent=indent + first, subsequent_indent=indent + (" " * 4 if first else ""),
                         break_long_words=False, break_on_hyphens=False)


# Python

def python_name(name):
    name = name.replace("-", "_")
    return name + "_" if name == "return" else name


def python_parameter(parameter):
    hint = {"pair": "Pair", "switch": "Switch", "text": "str"}[kind_of(parameter)]
    name = python_name(parameter.name)
    return f"{name}: Optional[{hint}] = None" if parameter.may_be_empty else f"{name}: {hint}"


def python_method(command):
    given = in_order(command)
    signature = ", ".join(["self", *map(python_parameter, given), "*", "time_out: Optional[float] = None"])
    signature = wrapped(signature, " " * (len(command.name) + 9)).strip()
    result = PYTHON_RESULTS[command.result_kind]
    first, *rest = [s.replace("{", "").replace("}", "") if not s.startswith("{") else
                    re.sub(r"^\{(.+?)\}", lambda m: python_name(m[1]), s) for s in sentences(command)]
    doc = [wrapped(first, "        ").strip()] + [wrapped(s, "        ") for s in rest]
    text = "\n\n".join(doc).replace("\\", "\\\\")
    ending = "\n        " if len(doc) > 1 else ""
    arguments = ", ".join(f'"{p.name}": {python_name(p.name)}' for p in given)
    call = f'self.call("{command.name}", {{{arguments}}}, time_out=time_out)'
    if result == "None":
        body = call
    else:
        body = f"return cast({result}, {call})"
    return f'    def {command.name}({signature}) -> {result}:\n        """{text}{ending}"""\n        {body}\n'


def python_file(found):
    return ('"""The commands as methods. Written by generate.py from the library\'s header."""\n'
            "from typing import Any, Dict, List, Mapping, Optional, Tuple, Union, cast\n\n"
            "Pair = Union[str, Tuple[int, int]]\n"
            "Switch = Union[str, bool]\n"
            "Value = Union[str, bool, int, Tuple[int, int], None]\n\n\n"
            "class Commands:\n"
            '    """One method a command. A failure raises quillmate.Failure."""\n\n'
            "    def call(self, command: str, parameters: Optional[Mapping[str, Value]] = None, *,\n"
            "             time_out: Optional[float] = None) -> Any:\n"
            "        raise NotImplementedError\n\n" + "\n".join(map(python_method, found)))


# Node.js

def node_name(name):
    return re.sub(r"[-_](\w)", lambda m: m[1].upper(), name)


def split(command):
    """The parameters that go without a name, and the rest."""
    given = in_order(command)
    plain = [p for i, p in enumerate(given)
             if not p.may_be_empty or p.name == "value" or i == 0]
    return plain, [p for p in given if p not in plain]


def node_comment(command):
    plain, named = split(command)
    yield command.summary
    for parameter in plain:
        yield f"@param {node_name(parameter.name)} {parameter.meaning} ({parameter.shape})"
    for parameter in named:
        yield f"@param options.{node_name(parameter.name)} {parameter.meaning} ({parameter.shape})"
    yield "@param options.timeOut milliseconds that the call may take."
    if command.result:
        yield f"@returns {command.result}"
    if command.notes:
        yield "@remarks " + " ".join(command.notes)


def node_method(command):
    plain, named = split(command)
    hint = {"pair": "Pair", "switch": "Switch", "text": "string"}
    signature = [f"{node_name(p.name)}{'?' if p.may_be_empty else ''}: {hint[kind_of(p)]}" for p in plain]
    fields = "".join(f"{node_name(p.name)}?: {hint[kind_of(p)]} | undefined; " for p in named)
    signature.append(f"options: {{ {fields}timeOut?: number | undefined }} = {{}}")
    arguments = ", ".join([f'"{p.name}": {node_name(p.name)}' for p in plain] +
                          [f'"{p.name}": options.{node_name(p.name)}' for p in named])
    doc = "\n".join(wrapped(line, "   * ") for line in node_comment(command))
    result = NODE_RESULTS[command.result_kind]
    call = f'this.call("{command.name}", {{ {arguments} }}, options.timeOut)'.replace("{  }", "{}")
    body = f"await {call};" if result == "void" else f"return (await {call}) as {result};"
    text = f"  async {command.name}({', '.join(signature)}): Promise<{result}> {{\n    {body}\n  }}\n"
    return f"  /**\n{doc}\n   */\n{text}"


def node_file(found):
    return ("// The commands as methods. Written by generate.py from the library's header.\n\n"
            "export type Pair = string | readonly [number, number];\n"
            "export type Switch = string | boolean;\n"
            "export type Value = string | boolean | number | readonly [number, number] | undefined;\n"
            "export type Table = (string | number)[][];\n"
            "export interface ControlInfo {\n  [member: string]: unknown;\n}\n\n"
            "/** One method a command. A failure rejects with a Failure. */\n"
            "export abstract class Commands {\n"
            "  abstract call(command: string, parameters?: Record<string, Value>, timeOut?: number): Promise<unknown>;\n\n"
            + "\n".join(map(node_method, found)) + "}\n")


def version():
    return re.search(r'#define QUILLMATE_VERSION "(.*)"', HEADER.read_text(encoding="utf-8"))[1]


def package_file():
    package = (HERE / "node/package.json").read_text(encoding="utf-8")
    return re.sub(r'"version": ".*?"', f'"version": "{version()}"', package, count=1)


def main():
    found = commands()
    differing = []
    for path, text in ((HERE / "python/quillmate/_commands.py", python_file(found)),
                       (HERE / "python/quillmate/_version.py", f'VERSION = "{version()}"\n'),
                       (HERE / "node/package.json", package_file()),
                       (HERE / "node/src/commands.ts", node_file(found))):
        if path.exists() and path.read_text(encoding="utf-8") == text:
            continue
        differing.append(path.name)
        if "--check" not in sys.argv:
            path.write_text(text, encoding="utf-8")
    if differing and "--check" in sys.argv:
        sys.exit("generate.py: run bindings/generate.py, out of date: " + ", ".join(differing))


if __name__ == "__main__":
    main()
