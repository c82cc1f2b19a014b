"""usage: fidelity_rows.py PROJECT

Checks that docs/fidelity.md and the tests name the same rows: each row that the page names exists, and each fact and
each choice of the test browser stands on the page."""
import pathlib
import re
import sys

FACT = re.compile(r'^\s*\{"([a-z0-9-]+)",', re.MULTILINE)
TEST = re.compile(r'^TEST(?:_F|_P)?\((\w+), (\w+)\)', re.MULTILINE)
QUESTION = re.compile(r'\{"([a-z-]+)", \{"')


def texts(project, pattern):
    return [path.read_text(encoding='utf-8') for path in sorted(project.glob(pattern))]


def named_rows(page):
    """The names in backquotes in the tables' columns of rows: the last but one of five, the last of three."""
    rows, switches = set(), set()
    for line in page.splitlines():
        columns = line.strip().strip('|').split('|')
        if not line.startswith('| ') or columns[0].strip() in ('#', 'switch'):
            continue
        if len(columns) == 5:
            rows.update(re.findall(r'`([\w.-]+)`', re.sub(r'\(.*?\)', '', columns[3])))
        elif len(columns) == 3:
            switches.update(re.findall(r'`([\w-]+)`', columns[0]))
            rows.update(re.findall(r'`([\w.-]+)`', columns[2]))
    return rows, switches


def main():
    project = pathlib.Path(sys.argv[1])
    rows, switches = named_rows((project / 'docs/fidelity.md').read_text(encoding='utf-8'))
    facts = {name for text in texts(project, 'tests/library/facts/*.cpp') for name in FACT.findall(text)}
    tests = {f'{suite}.{name}' for text in texts(project, 'tests/**/*.cpp') for suite, name in TEST.findall(text)}
    suites = {name.split('.')[0] for name in tests}
    questions = {name for text in texts(project, 'testbrowser/dom/unknown_answers.cpp') for name in QUESTION.findall(text)}
    faults = [f'docs/fidelity.md names no such row: {name}' for name in sorted(rows - facts - tests - suites)]
    faults += [f'docs/fidelity.md lacks the fact {name}' for name in sorted(facts - rows)]
    faults += [f'docs/fidelity.md and the test browser differ in {name}' for name in sorted(switches ^ questions)]
    if not rows or not facts or not questions:
        faults.append('nothing was found to compare')
    print('\n'.join(faults))
    return 1 if faults else 0


if __name__ == '__main__':
    sys.exit(main())
