"""Reads the contract of every command from include/quillmate.h.

The header's comments have a fixed layout: a summary, then "Parameters:", "Result:", "Bound:", "Fails with:" and "Note:",
each item or continuation indented. Whatever departs from it raises Malformed with the line that does.
"""
import dataclasses
import re


class Malformed(Exception):
    pass


@dataclasses.dataclass
class Check:
    """A parameter check that commands name instead of its message."""
    name: str
    accepts: str
    message: str


@dataclasses.dataclass
class Parameter:
    name: str
    shape: str
    may_be_empty: bool
    meaning: str


@dataclasses.dataclass
class Failure:
    """Its cause is a check's name, "the search's message", or a message, which then stands in `message`."""
    cause: str
    message: str | None
    when: str


@dataclasses.dataclass
class Command:
    name: str
    summary: str
    parameters: list
    result_kind: str
    result: str
    bound: str
    failures: list
    notes: list


@dataclasses.dataclass
class Group:
    title: str
    introduction: str
    commands: list


@dataclasses.dataclass
class Contract:
    checks: list
    groups: list

    def commands(self):
        return [command for group in self.groups for command in group.commands]

    def messages_of(self, command):
        """Every fixed message that a command can give, its checks' and the search's among them."""
        by_check = {check.name: check.message for check in self.checks}
        return {failure.message or by_check.get(failure.cause, SEARCH_MESSAGE) for failure in command.failures}


SEARCH = "the search's message"
SEARCH_MESSAGE = "Element not found!"
RESULT_KINDS = ("success", "text, number or success", "text or number", "text in UTF-8", "text in the second buffer",
                "array as text in UTF-8", "text", "number", "boolean", "object")


def paragraphs(comment):
    """The logical lines of a comment: a line that is indented below its list mark or its label continues it."""
    lines = []
    for line in comment.strip("\n").split("\n"):
        text = re.sub(r"^ \* ?", "", line)
        if text.startswith("  ") and lines:
            lines[-1] += " " + text.strip()
        elif text.startswith(("- ", "Parameters:", "Result:", "Bound: ", "Fails with:", "Note: ")) or not text or not lines:
            lines.append(text)
        elif lines[-1]:
            lines[-1] += " " + text
        else:
            lines.append(text)
    return lines


def parse_parameter(line):
    match = re.fullmatch(r'- "([\w-]+)" \((.+?), (required|may be empty)\): (.+\.)', line)
    if not match:
        raise Malformed(line)
    name, shape, empty, meaning = match.groups()
    return Parameter(name, shape, empty == "may be empty", meaning)


def parse_failure(line, checks):
    match = re.fullmatch(r'- "(.+?)": (.+\.)', line)
    if match:
        return Failure(match[1], match[1], match[2])
    match = re.fullmatch(r"- ([^:\"]+): (.+\.)", line)
    if not match or match[1] not in checks:
        raise Malformed(line)
    return Failure(match[1], None, match[2])


def parse_result(line):
    text = line.removeprefix("Result: ")
    kind = next((kind for kind in RESULT_KINDS if text.startswith(kind + ".")), None)
    if kind is None:
        raise Malformed(line)
    return kind, text[len(kind) + 1:].strip()


def parse_command(name, comment, checks):
    lines = [line for line in paragraphs(comment) if line]
    command = Command(name, lines[0], [], None, None, None, [], [])
    items = None
    for line in lines[1:]:
        if line == "Parameters: none, may be null.":
            items = None
        elif line == "Parameters:":
            items = lambda item: command.parameters.append(parse_parameter(item))
        elif line.startswith("Result: "):
            command.result_kind, command.result = parse_result(line)
        elif line.startswith("Bound: "):
            command.bound = line.removeprefix("Bound: ")
        elif line == "Fails with:":
            items = lambda item: command.failures.append(parse_failure(item, checks))
        elif line.startswith("Note: "):
            command.notes.append(line.removeprefix("Note: "))
        elif line.startswith("- ") and items:
            items(line)
        else:
            raise Malformed(f"{name}: {line}")
    if command.result_kind is None or command.bound is None or not command.failures:
        raise Malformed(f"{name} lacks a result, its bound or its failures")
    return command


def parse_checks(text):
    block = re.search(r"/\*\*\n \* @file\n(.*?)\n \*/", text, re.DOTALL)
    lines = paragraphs(block[1])
    found = [re.fullmatch(r"- ([a-z ]+ check) \((.+)\): \"(.+)\"", line) for line in lines if " check (" in line]
    if not found or None in found:
        raise Malformed("the list of checks")
    return [Check(*match.groups()) for match in found]


def read(path):
    text = open(path, encoding="utf-8").read()
    checks = parse_checks(text)
    names = {check.name for check in checks} | {SEARCH}
    groups = []
    pattern = r"/\*\* @name ([^\n]+)\n(.*?) \* @\{ \*/|/\*\*\n((?: \*[^\n]*\n)+?) \*/\nQUILLMATE_API const char\* quillmate_(\w+)\("
    for title, introduction, comment, name in re.findall(pattern, text, re.DOTALL):
        if title:
            groups.append(Group(title, " ".join(paragraphs(introduction)), []))
        else:
            groups[-1].commands.append(parse_command(name, comment, names))
    return Contract(checks, groups)
