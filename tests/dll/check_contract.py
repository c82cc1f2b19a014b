"""Holds the header's contract against the library: its list of commands, its messages, and the tests that assert them.

usage: check_contract.py SOURCE_ROOT
"""
import pathlib
import re
import sys

ROOT = pathlib.Path(sys.argv[1])
sys.path.insert(0, str(ROOT / "tools"))
import contract  # noqa: E402

FRAME_MESSAGE = "Can't find frame by "
SOURCES = [path for path in (ROOT / "src").rglob("*") if path.suffix in (".cpp", ".h", ".inc")]


def joined_literals(text):
    """Adjacent string literals are one text to the compiler."""
    return re.sub(r'"\s*\n\s*"', "", text)


def constants():
    (path,) = [path for path in SOURCES if path.name == "messages.h"]
    rows = re.findall(r'inline constexpr char (k\w+)\[\] =\s*"([^"]*)";', joined_literals(path.read_text()))
    # Member names and the like are single words.
    return {name: text for name, text in rows if re.match(r"[A-Z]\S* ", text) or text.startswith("Assertalert")}


def used_constants(messages):
    code = "\n".join(path.read_text() for path in SOURCES if path.name != "messages.h")
    return {name for name in messages if re.search(rf"\b{name}\b", code)}


def listed():
    (path,) = [path for path in SOURCES if path.name == "command_list.inc"]
    rows = re.findall(r"^QUILLMATE_COMMAND\((\w+), [\w:]+, (k\w+)([^\n]*)\)$", path.read_text(), re.MULTILINE)
    commands = {name: (failure, re.findall(r'"([^"]+)"', rest)) for name, failure, rest in rows}
    same = re.findall(r"^QUILLMATE_SAME_COMMAND\((\w+), (\w+)([^\n]*)\)$", path.read_text(), re.MULTILINE)
    return commands | {name: (commands[of][0], re.findall(r'"([^"]+)"', rest)) for name, of, rest in same}


def fixed(message):
    return FRAME_MESSAGE if message == FRAME_MESSAGE + "TARGET" else message


def check_commands(header, messages):
    wanted = listed()
    told = {command.name: command for command in header.commands()}
    if len(wanted) != 61:
        yield f"the list has {len(wanted)} commands"
    for name in sorted(wanted.keys() ^ told.keys()):
        yield f"{name} stands in only one of the header and the list of commands"
    for name in sorted(wanted.keys() & told.keys()):
        failure, parameters = wanted[name]
        names = [parameter.name for parameter in told[name].parameters]
        if sorted(parameters) != sorted(names):
            yield f"{name}: the header's parameters are {names}, the list's {parameters}"
        if messages[failure] not in header.messages_of(told[name]):
            yield f"{name}: the header lacks {messages[failure]!r}, which it gives when it cannot run"


def check_messages(header, messages):
    told = {fixed(text) for command in header.commands() for text in header.messages_of(command)}
    told |= {check.message for check in header.checks}
    for text in sorted(told - set(messages.values())):
        yield f"the library has no message {text!r}"
    for name in sorted(used_constants(messages)):
        if messages[name] not in told:
            yield f"no command in the header gives {messages[name]!r}"


def check_tests(header):
    told = {fixed(text) for command in header.commands() for text in header.messages_of(command)}
    tests = joined_literals("\n".join(path.read_text() for path in (ROOT / "tests").rglob("*.cpp")))
    asserted = {text for text in told if f'"{text}' in tests or f"({text}" in tests}
    for text in sorted(told - asserted):
        yield f"no test asserts {text!r}"


def main():
    header = contract.read(ROOT / "include/quillmate.h")
    messages = constants()
    problems = [*check_commands(header, messages), *check_messages(header, messages), *check_tests(header)]
    return "\n".join(problems) or None  # None is success


sys.exit(main())
